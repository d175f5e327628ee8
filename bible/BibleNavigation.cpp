// The Bible as the manager of its tree: tying the tree, the rows chosen in it, what
// goes to the caption, and what may be dragged out of it or dropped on it.
#include <cwchar>

#include "bible/VXBible.h"
#include "persistence/TextLine.h"
#include "runtime/ValueConversion.h"

namespace {

// The header without the translation's abbreviation: the text up to its first "[".
SmartPtr<IString> CutAtBracket(IString* header)
{
    CREFString text(header);
    int32_t length = 0;
    while (length < text.m_Length && text.m_Buffer[length] != L'[')
        ++length;
    return SmartPtr<IString>::Adopt(ISCreate(CREFString(text.m_Buffer, length)));
}

// The first line of a node's text, without its trailing controls and leading blanks.
SmartPtr<IString> FirstLine(IUnknown* node)
{
    CREFString text(node);
    CREFString line;
    text.GetLine(&line, false, L'\n', true);
    TextTrimRight(line);
    line.TrimLeft(false);
    return SmartPtr<IString>::Adopt(ISCreate(line));
}

// A node whose object name is exactly that of a Bible's chapter.
bool IsChapter(IUnknown* node)
{
    auto info = QueryAs<IObjectInfo>(node);
    tagREFString name{0, nullptr};
    if (!info || info->GetName(0, &name) < 0 || !name.m_Buffer)
        return false;
    constexpr tagREFString chapter = REFLiteral(L"VXBibleChapter");
    return name.m_Length == chapter.m_Length &&
           std::wmemcmp(name.m_Buffer, chapter.m_Buffer, size_t(chapter.m_Length)) == 0;
}

} // namespace

SmartPtr<IUITree> CVXBible::Tree() { return m_UserInterface ? m_UserInterface.As<IUITree>() : SmartPtr<IUITree>(); }

SmartPtr<IUIManagerCollection> CVXBible::Manager()
{
    if (!m_Parent)
        return {};
    if (auto manager = m_Parent.As<IUIManagerCollection>())
        return manager;
    SmartPtr<IUnknown> grand;
    if (auto parent = m_Parent.As<IParent>())
        parent->get_Parent(grand.Receive());
    return QueryAs<IUIManagerCollection>(grand.get());
}

int32_t CVXBible::get_UserInterface(IUINodeContainer** tree)
{
    if (!tree)
        return E_INVALIDARG;
    *tree = m_UserInterface.Copy();
    return *tree ? S_OK : E_FAIL;
}

int32_t CVXBible::put_UserInterface(IUINodeContainer* tree)
{
    if (m_UserInterface) {
        if (auto events = m_UserInterface.As<IEventSource>())
            events->Advise(nullptr, ADVISE_REMOVE);
        m_UserInterface->Detach();
        if (auto parent = m_UserInterface.As<IParent>())
            parent->put_Parent(nullptr);
    }
    if (!tree) {
        m_UserInterface = nullptr;
        return S_OK;
    }
    m_UserInterface = SmartPtr<IUINodeContainer>(tree);
    if (auto view = m_UserInterface.As<IUITree>()) {
        view->put_Root(static_cast<ISuperCollection*>(this));
        view->SetOption(145, 1);
        view->SetOption(146, 0);
    }
    if (auto events = m_UserInterface.As<IEventSource>())
        events->Advise(static_cast<_IUIContainerEvents*>(this), ADVISE_ADD);
    if (auto parent = m_UserInterface.As<IParent>())
        parent->put_Parent(static_cast<IParent*>(this));
    return S_OK;
}

int32_t CVXBible::Refresh(int)
{
    // While the tree lists hits, they stay up.
    if (m_SearchMode == 0)
        if (auto view = Tree())
            view->put_Root(static_cast<ISuperCollection*>(this));
    Fire_UIItemChanged();
    return S_OK;
}

int32_t CVXBible::NodeSelect(IUnknown* source, int action, int row, int flags, IUnknown* node)
{
    if ((action != 1 && action != 2 && action != 9) || (flags & 2))
        return S_OK;
    if (flags & 1) {
        SmartPtr<IVXBook> book = QueryAs<IVXBook>(node);
        if (!book && IsChapter(node))
            book = QueryAs<IVXBook>(source);
        if (!book)
            return S_OK;
        int chapters = 0;
        book->get_ChapterCount(&chapters);
        if (chapters > 1) {
            Fire_NodeSelect(Primary(), action, row, 0, book);
            return S_OK;
        }
    }

    auto reference = QueryAs<IVXTextReference>(node);
    SmartPtr<IUIManagerCollection> manager = Manager();
    bool showsHits = false;
    if (auto view = Tree()) {
        SmartPtr<IUnknown> active;
        view->GetSelection(0, 2, active.Receive());
        showsHits = active && SameObject(active, m_SearchResults);
    }

    SmartPtr<IString> caption;
    bool setCaption = true;
    if (reference && showsHits) {
        // A hit chosen a second time counts as a plain selection.
        if (node && SameObject(node, m_LastNode)) {
            setCaption = false;
            action = 1;
        } else {
            caption.Attach(ISCreate(L" "));
        }
    } else if (auto book = QueryAs<IVXBook>(node)) {
        SmartPtr<IString> header;
        book->Header(header.Receive(), 0, -1, 0, nullptr);
        caption = CutAtBracket(header);
    } else if (reference) {
        int chapter = -1, verse = -1;
        reference->GetPosition(&chapter, &verse, nullptr);
        SmartPtr<IVXBook> owner;
        reference->GetBook(owner.Receive());
        SmartPtr<IString> header;
        if (owner)
            owner->Header(header.Receive(), chapter, verse, 1, nullptr);
        caption = CutAtBracket(header);
    } else {
        // A chapter, or any other node with text: its first line. No text: no caption.
        caption = FirstLine(node);
    }
    if (manager && setCaption)
        manager->SetCaption(caption, -1, 0);

    m_LastNode = SmartPtr<IUnknown>(node);
    Fire_NodeSelect(Primary(), action, row, 0, node);
    return S_OK;
}

int32_t CVXBible::GetSelected(IUnknown**) { return S_OK; }
int32_t CVXBible::Select(int, int, int) { return S_OK; }
// A Bible can't lose its books through the tree.
int32_t CVXBible::Remove() { return S_OK; }
int32_t CVXBible::RemoveAll() { return S_OK; }
int32_t CVXBible::NodeChanged(IUnknown*, IUnknown*) { return S_OK; }
int32_t CVXBible::GetDropObject(IUnknown**, double, double, CANVASRect*) { return S_OK; }

int32_t CVXBible::NodeDrag(IUnknown* /*source*/, int /*a*/, int b, int c, IUnknown* node)
{
    auto workspace = Make<IWorkspace>(REFLiteral(L"ActiveWorkspace"));
    // Books and chapters stay where they are.
    if (QueryAs<INamedCollection>(node))
        return S_OK;
    if (workspace)
        workspace->BeginDrag(static_cast<IUIDropSource*>(this), b, c, node);
    return S_OK;
}

int32_t CVXBible::DragDrop(IUnknown* /*object*/, int /*a*/, int b, double, double, CANVASRect*)
{
    // Nothing is dropped: a Bible takes nothing in.
    return (b & 0x20) && !(b & 0x10) ? E_FAIL : S_OK;
}

int32_t CVXBible::ControlEx(int id, IUnknown* value)
{
    int32_t result = Properties::ControlEx(id, value);
    // A new abbreviation reaches every header at once.
    if (id == BIBLE_PROP_ABBREVIATION) {
        int count = 0;
        get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> item;
            get_Item(i, item.Receive());
            if (auto book = item.As<IUIPropInterrogateEx>())
                book->ControlEx(BOOK_PROP_TRANSLATION, value);
        }
    }
    return result;
}
