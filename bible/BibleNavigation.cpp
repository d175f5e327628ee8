// The Bible as the manager of its tree: tying the tree, the rows chosen in it, and
// the keys that walk verses, chapters and books.
#include "bible/VXBible.h"

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

int32_t CVXBible::Refresh(int) { return E_NOTIMPL; }
int32_t CVXBible::GetSelected(IUnknown**) { return E_NOTIMPL; }
int32_t CVXBible::Select(int, int, int) { return E_NOTIMPL; }
int32_t CVXBible::MoveUp() { return E_NOTIMPL; }
int32_t CVXBible::MoveDown() { return E_NOTIMPL; }
int32_t CVXBible::MoveLeft() { return E_NOTIMPL; }
int32_t CVXBible::MoveRight() { return E_NOTIMPL; }
int32_t CVXBible::PageUp() { return E_NOTIMPL; }
int32_t CVXBible::PageDown() { return E_NOTIMPL; }
int32_t CVXBible::Remove() { return E_NOTIMPL; }
int32_t CVXBible::RemoveAll() { return E_NOTIMPL; }
int32_t CVXBible::MoveNext() { return E_NOTIMPL; }
int32_t CVXBible::MovePrevious() { return E_NOTIMPL; }

int32_t CVXBible::NodeSelect(IUnknown*, int, int, int, IUnknown*) { return E_NOTIMPL; }
int32_t CVXBible::NodeDrag(IUnknown*, int, int, int, IUnknown*) { return E_NOTIMPL; }
int32_t CVXBible::NodeChanged(IUnknown*, IUnknown*) { return E_NOTIMPL; }

int32_t CVXBible::ControlEx(int id, IUnknown* value) { return Properties::ControlEx(id, value); }

int32_t CVXBible::GetDropObject(IUnknown**, double, double, CANVASRect*) { return E_NOTIMPL; }
int32_t CVXBible::DragDrop(IUnknown*, int, int, double, double, CANVASRect*) { return E_NOTIMPL; }
