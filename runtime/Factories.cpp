#include "runtime/Factories.h"

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

// The lowest layer's factories work before and without a collection: failing the
// collection, the record comes straight from "CollectionsEx" and is told which
// module and component it stands for. With keptForGood the record gets one more
// reference that is never released, so it outlives every other static of the
// process; the pointer stays in keptForGood so that the record is still reachable
// at exit and a leak check tells it apart from a real leak.
template <class I>
I* CreateWithFallback(SmartPtr<IComponentString>& record, tagREFString component,
                      IComponentString* volatile* keptForGood)
{
    if (!record && gGlobalComponentCollection)
        gGlobalComponentCollection->CreateObject(component, nullptr, record.ReceiveVoid());
    if (!record) {
        VXCreateFunction create =
            MODULECreateFunction(REFLiteral(L"CollectionsEx"), REFLiteral(L"ComponentString"));
        if (create)
            create(nullptr, const_cast<IID*>(&IID_IComponentString), record.ReceiveVoid());
        if (!record)
            return nullptr;
        if (keptForGood) {
            record->AddRef();
            *keptForGood = record.get();
        }
        record->put_Field(COMPONENT_FIELD_MODULE, REFLiteral(L"Collections"));
        record->put_Field(COMPONENT_FIELD_NAME, component);
    }
    I* out = nullptr;
    record->CreateObject(I::Iid(), reinterpret_cast<void**>(&out));
    return out;
}

// The record of a component, found by name in a collection.
IComponentString* FindRecord(IComponentCollection* collection, const wchar_t* component)
{
    if (!collection)
        return nullptr;
    auto name = SmartPtr<IString>::Adopt(ISCreate(component));
    int index = -1;
    if (collection->get_Index(name, &index) < 0)
        return nullptr;
    SmartPtr<IUnknown> item;
    collection->get_Item(index, item.Receive());
    return QueryAs<IComponentString>(item.get()).Detach();
}

template <class I> I* CreateFromRecord(SmartPtr<IComponentString>& record, const wchar_t* component)
{
    if (!record) {
        auto collection = SmartPtr<IComponentCollection>::Adopt(GLOBALComponents());
        record.Attach(FindRecord(collection, component));
    }
    // A component the collection doesn't hold is a fault of the installation;
    // the caller gets null rather than a crash.
    if (!record)
        return nullptr;
    I* out = nullptr;
    record->CreateObject(I::Iid(), reinterpret_cast<void**>(&out));
    return out;
}

} // namespace

ICreatableString* CREFString::CreateString()
{
    static SmartPtr<IComponentString> gStringComponent;
    return CreateWithFallback<ICreatableString>(gStringComponent, REFLiteral(L"CreatableString"), nullptr);
}

IVariant* CREFString::CreateVariant()
{
    static SmartPtr<IComponentString> gVariantComponent;
    static IComponentString* volatile gVariantKept = nullptr;
    return CreateWithFallback<IVariant>(gVariantComponent, REFLiteral(L"Variant"), &gVariantKept);
}

ISuperCollection* CREFString::CreateCollection()
{
    static SmartPtr<IComponentString> gCollectionComponent;
    static IComponentString* volatile gCollectionKept = nullptr;
    return CreateWithFallback<ISuperCollection>(gCollectionComponent, REFLiteral(L"SuperCollection"), &gCollectionKept);
}

ISuperCollection* BASEObject::CreateNamedCollection()
{
    static SmartPtr<IComponentString> gSuperCollection;
    return CreateFromRecord<ISuperCollection>(gSuperCollection, L"SuperCollection");
}

ISimpleCollection* BASEObject::CreateSimpleCollection()
{
    static SmartPtr<IComponentString> gSimpleCollection;
    return CreateFromRecord<ISimpleCollection>(gSimpleCollection, L"SimpleCollection");
}

IParametersCreatable* BASEObject::CreateParameters()
{
    static SmartPtr<IComponentString> gParametersCreatable;
    return CreateFromRecord<IParametersCreatable>(gParametersCreatable, L"ParametersCreatable");
}

IRegistry* BASEObject::CreateRegistry()
{
    static SmartPtr<IComponentString> gRegistry;
    return CreateFromRecord<IRegistry>(gRegistry, L"Registry");
}

IRegistryEx* BASEObject::CreateRegistryEx()
{
    static SmartPtr<IComponentString> gRegistry;
    return CreateFromRecord<IRegistryEx>(gRegistry, L"Registry");
}

IUIVerbCollection* UIObject::CreateUIVerbCollection()
{
    static SmartPtr<IComponentString> gUIVerbCollection;
    return CreateFromRecord<IUIVerbCollection>(gUIVerbCollection, L"UIVerbCollection");
}

IButton* UIObject::CreateUIButton()
{
    static SmartPtr<IComponentString> gButton;
    return CreateFromRecord<IButton>(gButton, L"Button");
}

IButtonCollection* UIObject::CreateUIButtonCollection()
{
    static SmartPtr<IComponentString> gButtonCollection;
    return CreateFromRecord<IButtonCollection>(gButtonCollection, L"ButtonCollection");
}

IVXText* UIObject::CreateVXText()
{
    static SmartPtr<IComponentString> gVXText;
    return CreateFromRecord<IVXText>(gVXText, L"VXText");
}

IVXRenderer* UIObject::CreateVXRenderer()
{
    static SmartPtr<IComponentString> gVXRenderer;
    return CreateFromRecord<IVXRenderer>(gVXRenderer, L"VXRenderer");
}

IVXRenderStyle* UIObject::CreateVXRenderStyle()
{
    static SmartPtr<IComponentString> gVXRenderStyle;
    return CreateFromRecord<IVXRenderStyle>(gVXRenderStyle, L"VXRenderStyle");
}

IVXTextReference* VXCoreObject::CreateVXTextReference()
{
    static SmartPtr<IComponentString> gVXTextReferenceComponent;
    if (!gVXTextReferenceComponent) {
        // Searches a collection of its own, asked for by name.
        auto global = SmartPtr<IComponentCollection>::Adopt(GLOBALComponents());
        SmartPtr<IComponentCollection> collection;
        if (global)
            global->CreateObject(REFLiteral(L"GlobalComponentCollection"), const_cast<IID*>(&IID_IComponentCollection),
                                 collection.ReceiveVoid());
        gVXTextReferenceComponent.Attach(FindRecord(collection, L"VXTextReference"));
    }
    return CreateFromRecord<IVXTextReference>(gVXTextReferenceComponent, L"VXTextReference");
}
