// "UIUtils": the application's dialogs, answered as the host says. A host has no
// one to click: every dialog of the process gives the same answer, taken from the
// environment variable VX_DIALOG_ANSWER ("ok", else cancel) and changed through any
// UIUtils object's Control(UIUTILS_ANSWER, ...). An "ok" file dialog saves the
// object it was shown for; a property frame answers its Show with the answer.
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

class CUIUtils : public CObject<CUIUtils>,
                 public IObjectInfoImpl<CUIUtils>,
                 public IUIUtils,
                 public IUIPropInterrogate {
public:
    static constexpr wchar_t kObjectName[] = L"UIUtils";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IUIUtils>, Entry<IUIPropInterrogate>>;

    // A frame over the pages, handed out in *frame; it shows nothing by itself.
    int32_t ShowPropertyFrame(IString* title, IUnknown* owner, int a, IUnknown* pages, IUnknown** frame, int b,
                              int c) override;
    // The save dialog: with "ok" the archive's Save, and its result; S_FALSE on cancel.
    int32_t ShowFileArchive(IUnknown* archive, int a, int b, int c, int d, int e, int f) override;

    // IUIPropInterrogate: UIUTILS_ANSWER is set and read, UIUTILS_SHOWN read.
    int32_t Control(int code, int value) override;
    int32_t Inquire(int code, int* value) override;
    int32_t ParameterRange(int id, int* low, int* high) override { return E_NOTIMPL; }
    int32_t ParameterEnumeration(int id, IUnknown** enumeration) override { return E_NOTIMPL; }
};

// What ShowPropertyFrame hands out: the frame keeps its pages and owner until it goes.
class CUIPropertyFrame : public CObject<CUIPropertyFrame>,
                         public IObjectInfoImpl<CUIPropertyFrame>,
                         public IUIPropertyFrame {
public:
    static constexpr wchar_t kObjectName[] = L"UIPropertyFrame";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IUIPropertyFrame>>;

    static SmartPtr<IUIPropertyFrame> Create(IUnknown* owner, IUnknown* pages);
    void FinalRelease() override;

    // S_OK when the dialogs answer "ok", S_FALSE otherwise.
    int32_t Show(int a, int b) override;

private:
    SmartPtr<IUnknown> m_Owner;
    SmartPtr<IUnknown> m_Pages;
};
