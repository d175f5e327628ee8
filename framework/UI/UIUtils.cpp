#include "framework/UI/UIUtils.h"

#include <cstdlib>
#include <cstring>

namespace {

// The process-wide state of the dialogs. Guarded by nothing: dialogs run on the
// caller's thread, as everything here does.
struct DialogState {
    int m_Answer;
    int m_Shown = 0;
};

DialogState& Dialogs()
{
    static DialogState state{[] {
        const char* answer = std::getenv("VX_DIALOG_ANSWER");
        return answer && std::strcmp(answer, "ok") == 0 ? UIDIALOG_OK : UIDIALOG_CANCEL;
    }()};
    return state;
}

// Counts one dialog shown, and gives its answer.
int Answer()
{
    ++Dialogs().m_Shown;
    return Dialogs().m_Answer;
}

} // namespace

int32_t CUIUtils::ShowPropertyFrame(IString* /*title*/, IUnknown* owner, int /*a*/, IUnknown* pages,
                                    IUnknown** frame, int /*b*/, int /*c*/)
{
    if (!frame)
        return E_POINTER;
    SmartPtr<IUIPropertyFrame> made = CUIPropertyFrame::Create(owner, pages);
    if (!made)
        return E_FAIL;
    *frame = made.Detach();
    return S_OK;
}

int32_t CUIUtils::ShowFileArchive(IUnknown* archive, int, int, int, int, int, int)
{
    auto file = QueryAs<IFileArchive>(archive);
    if (!file)
        return E_INVALIDARG;
    if (Answer() != UIDIALOG_OK)
        return S_FALSE;
    return file->Save();
}

int32_t CUIUtils::Control(int code, int value)
{
    if (code != UIUTILS_ANSWER)
        return E_INVALIDARG;
    Dialogs().m_Answer = value == UIDIALOG_OK ? UIDIALOG_OK : UIDIALOG_CANCEL;
    return S_OK;
}

int32_t CUIUtils::Inquire(int code, int* value)
{
    if (!value)
        return E_POINTER;
    if (code == UIUTILS_ANSWER)
        *value = Dialogs().m_Answer;
    else if (code == UIUTILS_SHOWN)
        *value = Dialogs().m_Shown;
    else
        return E_INVALIDARG;
    return S_OK;
}

SmartPtr<IUIPropertyFrame> CUIPropertyFrame::Create(IUnknown* owner, IUnknown* pages)
{
    IID iid = IID_IUIPropertyFrame;
    SmartPtr<IUIPropertyFrame> frame;
    if (_CreateInstance(nullptr, &iid, frame.ReceiveVoid()) < 0)
        return nullptr;
    auto* self = static_cast<CUIPropertyFrame*>(frame.get());
    self->m_Owner = SmartPtr<IUnknown>(owner);
    self->m_Pages = SmartPtr<IUnknown>(pages);
    return frame;
}

void CUIPropertyFrame::FinalRelease()
{
    m_Pages.Clear();
    m_Owner.Clear();
}

int32_t CUIPropertyFrame::Show(int /*a*/, int /*b*/) { return Answer() == UIDIALOG_OK ? S_OK : S_FALSE; }
