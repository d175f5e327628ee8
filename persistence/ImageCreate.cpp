#include "persistence/ImageCreate.h"

#include <string>

#include "persistence/PathMapping.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

template <class I> SmartPtr<I> Make(tagREFString component)
{
    IID iid = I::Iid();
    return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(component, &iid))));
}

// The object whose component names the picture: behind a moniker, above a contained object.
SmartPtr<IUnknown> Owner(IUnknown* object)
{
    SmartPtr<IUnknown> owner(object);
    if (auto moniker = QueryAs<ICollectionMoniker>(object)) {
        SmartPtr<IUnknown> named;
        if (moniker->get_Object(IID_IUnknown, named.ReceiveVoid()) >= 0 && named)
            owner = named;
    }
    if (auto contained = QueryAs<IContainedObject>(owner.get())) {
        SmartPtr<IUnknown> container;
        if (contained->get_Container(container.Receive()) >= 0 && container)
            owner = container;
    }
    return owner;
}

// The component's name, by its own record or by one made for it.
SmartPtr<IString> ComponentName(IUnknown* owner)
{
    auto record = QueryAs<IComponentString>(owner);
    if (!record) {
        record = Make<IComponentString>(REFLiteral(L"ComponentString"));
        if (!record || record->put_Object(owner) < 0)
            return nullptr;
    }
    SmartPtr<IString> name;
    if (record->get_Field(COMPONENT_FIELD_NAME, name.Receive()) < 0)
        return nullptr;
    return name;
}

} // namespace

IRenderableObject* IMAGECreate(IUnknown* object)
{
    SmartPtr<IUnknown> owner = Owner(object);
    SmartPtr<IString> name = ComponentName(owner.get());
    if (CREFString(name.get()).IsEmpty())
        return nullptr;
    SmartPtr<IString> common;
    ReadWorkspaceValue(L"CommonPath", common.Receive());
    CREFString folder(common.get());
    CREFString component(name.get());
    std::wstring text(folder.m_Buffer ? folder.m_Buffer : L"", size_t(folder.m_Length > 0 ? folder.m_Length : 0));
    text.append(L"/icons/").append(component.m_Buffer, size_t(component.m_Length)).append(L".png");
    auto path = SmartPtr<IString>::Adopt(ISCreate(CREFString(text.data(), int32_t(text.size()))));
    auto picture = Make<IRenderableObject>(REFLiteral(L"QIFFileEx"));
    auto file = picture.As<IFileArchive>();
    if (!file || file->put_Filename(path) < 0 || file->Load() < 0)
        return nullptr;
    return picture.Detach();
}
