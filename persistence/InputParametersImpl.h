// A parameter collection with input ports: a step's inputs are a second collection
// whose items are bound to sources elsewhere. Adds binding, saving in both stream
// forms, and copying that doesn't share a binding.
#pragma once
#include "persistence/ParametersImpl.h"
#include "persistence/ParametersStream.h"
#include "runtime/Module.h"

// Binds the source moniker of each input to the collection; an input that lacks a
// step of the way is left unbound.
inline void ParameterBindSource(IUnknown* candidate, INamedCollection* collection)
{
    auto input = QueryAs<IInputParameter>(candidate);
    if (!input)
        return;
    SmartPtr<IUnknown> source;
    input->get_Source(source.Receive());
    if (auto moniker = QueryAs<ICollectionMoniker>(source.get()))
        moniker->Bind(QueryAs<INamedCollection>(collection).get(), 0);
}

inline void ParameterBindInputs(IUnknown* inputs, INamedCollection* collection)
{
    auto list = QueryAs<IInputParameters>(inputs);
    if (!list)
        return;
    int count = 0;
    list->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        if (list->get_Item(i, item.Receive()) >= 0)
            ParameterBindSource(item, collection);
    }
}

inline void ParameterBindParameterDescriptors(IUnknown* object, INamedCollection* collection)
{
    auto parameters = QueryAs<IParameters>(object);
    if (!parameters)
        return;
    for (int i = 0;; ++i) {
        SmartPtr<IUnknown> descriptor;
        if (parameters->Iterate(i, nullptr, nullptr, descriptor.Receive(), nullptr) < 0)
            break;
        ParameterBindSource(descriptor, collection);
    }
}

// A new "InputParameter" with the old one's target, source, flags and name.
inline SmartPtr<IUnknown> ParameterCopyInput(IInputParameter* old)
{
    IID iid = IInputParameter::Iid();
    auto copy = SmartPtr<IInputParameter>::Adopt(
        static_cast<IInputParameter*>(static_cast<void*>(CreateObject(REFLiteral(L"InputParameter"), &iid))));
    if (!copy)
        return {};
    SmartPtr<IUnknown> target, source;
    SmartPtr<IString> name;
    int flags = 0;
    old->get_Target(target.Receive());
    copy->put_Target(target);
    old->get_Source(source.Receive());
    copy->put_Source(source);
    old->get_Flags(&flags);
    copy->put_Flags(flags);
    old->get_Name(name.Receive());
    copy->put_Name(CREFString(name.get()));
    return SmartPtr<IUnknown>(copy.get());
}

// Copies every item of `from` into `to`: by index where `to` has the item already,
// else added through IParametersCreatable.
inline void ParameterReplicateItems(IParameters* from, IUnknown* to)
{
    auto target = QueryAs<IParameters>(to);
    if (!from || !target)
        return;
    int count = 0;
    from->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IVariant> value;
        SmartPtr<IUnknown> descriptor;
        SmartPtr<IString> name;
        int flags = 0;
        from->get_ItemVariant(i, value.Receive());
        from->get_ItemDescriptor(i, descriptor.Receive());
        if (auto input = descriptor.As<IInputParameter>())
            descriptor = ParameterCopyInput(input);
        auto fresh = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
        if (fresh && value)
            fresh->put_Object(value);
        if (target->put_Item(i, fresh) >= 0) {
            target->put_ItemDescriptor(i, descriptor);
            continue;
        }
        from->get_ItemName(i, name.Receive());
        from->get_ItemFlags(i, &flags);
        if (auto creatable = QueryAs<IParametersCreatable>(to))
            creatable->Add(name, fresh, descriptor, flags);
    }
}

template <class T, class Base = IParameters>
class InputParametersImpl : public IParametersImpl<T, Base>,
                            public IBindableObject,
                            public IDataPersist,
                            public IReplicableObject {
public:
    using Parameters = IParametersImpl<T, Base>;
    using Interfaces =
        QiList<Chain<Parameters>, Entry<IBindableObject>, Entry<IDataPersist>, Entry<IReplicableObject>>;

    InputParametersImpl()
    {
        IID iid = IInputParameters::Iid();
        m_Inputs.Attach(static_cast<IInputParameters*>(
            static_cast<void*>(CreateObject(REFLiteral(L"InputParameters"), &iid))));
    }

    int32_t Bind(INamedCollection* collection, IUnknown*) override
    {
        ParameterBindInputs(m_Inputs, collection);
        ParameterBindParameterDescriptors(static_cast<Base*>(this), collection);
        return S_OK;
    }

    // XML keeps only the parameters, compact; a folder keeps the inputs too.
    int32_t Save(IDataStream* stream, int flags) override
    {
        if (!stream)
            return S_OK;
        if (QueryAs<IXMLStream>(stream)) {
            this->Params_SaveXML(stream, PARAMS_COMPACT);
            return S_OK;
        }
        auto folder = QueryAs<IFolderStream>(stream);
        if (!folder)
            return S_OK;
        auto inputs = QueryAs<IDataPersist>(m_Inputs.get());
        if (m_SeparateInputs) {
            SmartPtr<IDataStream> parameters;
            folder->CreateFolder(SmartPtr<IString>::Adopt(ISCreate(L"Parameters")), 0, parameters.Receive());
            this->Params_SaveFolderStream(parameters, flags);
            SmartPtr<IDataStream> inputFolder;
            folder->CreateFolder(SmartPtr<IString>::Adopt(ISCreate(L"Inputs")), 0, inputFolder.Receive());
            if (inputs && inputFolder)
                inputs->Save(inputFolder, flags | PARAMS_COMPACT);
        } else {
            this->Params_SaveFolderStream(stream, flags | PARAMS_COMPACT);
            if (inputs)
                inputs->Save(stream, flags | PARAMS_COMPACT);
        }
        return S_OK;
    }

    int32_t Load(IDataStream* stream, int flags) override
    {
        if (!stream)
            return E_NOTIMPL;
        if (QueryAs<IXMLStream>(stream)) {
            this->Params_LoadXML(stream, flags | (m_SeparateInputs ? PARAMS_REPLACE : 0), 0);
            return S_OK;
        }
        if (!QueryAs<IFolderStream>(stream))
            return E_NOTIMPL;
        auto inputs = QueryAs<IDataPersist>(m_Inputs.get());
        if (m_SeparateInputs) {
            if (auto parameters = SubStream(stream, L"Parameters"))
                this->Params_LoadFolderStream(parameters, flags | PARAMS_REPLACE);
            if (auto inputFolder = SubStream(stream, L"Inputs"); inputFolder && inputs)
                inputs->Load(inputFolder, flags);
        } else {
            this->Params_LoadFolderStream(stream, flags | PARAMS_COMPACT);
            if (inputs)
                inputs->Load(stream, flags);
        }
        return S_OK;
    }

    // A new object of the class with the same values; bound inputs are copied, not shared.
    int32_t Replicate(IUnknown** out) override
    {
        if (!out)
            return E_POINTER;
        *out = nullptr;
        IID iid = IParameters::Iid();
        SmartPtr<IParameters> copy;
        int32_t result = CObject<T>::_CreateInstance(nullptr, &iid, copy.ReceiveVoid());
        if (result < 0 || !copy)
            return result < 0 ? result : E_FAIL;
        ParameterReplicateItems(static_cast<Base*>(this), copy);
        auto* other = static_cast<InputParametersImpl*>(static_cast<Base*>(copy.get()));
        ParameterReplicateItems(QueryAs<IParameters>(m_Inputs.get()), other->m_Inputs);
        *out = SmartPtr<IUnknown>(copy.get()).Detach();
        return S_OK;
    }

protected:
    ~InputParametersImpl() = default;

    SmartPtr<IInputParameters> m_Inputs;
    int32_t m_SeparateInputs = 0;

private:
    // The sub-stream of a named entry of a folder stream, or empty.
    static SmartPtr<IDataStream> SubStream(IDataStream* stream, const wchar_t* name)
    {
        auto entries = QueryAs<INamedCollection>(stream);
        int index = -1;
        SmartPtr<IUnknown> item;
        if (!entries || entries->get_Index(SmartPtr<IString>::Adopt(ISCreate(name)), &index) < 0 ||
            entries->get_Item(index, item.Receive()) < 0)
            return {};
        return item.As<IDataStream>();
    }
};
