// A saved collection read back from any text: the first byte picks the load
// flags, the rest is the XML form, widened byte by byte. What was read is then
// saved and read once more, as a show is saved again after loading.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "persistence/NamedCollection.h"
#include "runtime/Module.h"
#include "runtime/ObjectInfo.h"

namespace {

class CFuzzCollection : public CObject<CFuzzCollection>,
                        public IObjectInfoImpl<CFuzzCollection>,
                        public INamedCollectionImpl<CFuzzCollection, ISuperCollection, IUnknown> {
public:
    using Collection = INamedCollectionImpl<CFuzzCollection, ISuperCollection, IUnknown>;
    static constexpr wchar_t kObjectName[] = L"FuzzCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Collection>>;

    int32_t Clear() override { return CollectionClear(); }
    int32_t VerifyInterface(IUnknown* item, IUnknown** verified) override
    {
        *verified = nullptr;
        return item && item->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(verified)) >= 0 ? S_OK : E_FAIL;
    }
};

template <class I> SmartPtr<I> Make(tagREFString component)
{
    IID iid = I::Iid();
    auto made = SmartPtr<I>::Adopt(static_cast<I*>(CreateObject(component, &iid)));
    if (!made)
        __builtin_trap();
    return made;
}

SmartPtr<IString> Name(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0 || size > 64 * 1024)
        return 0;
    const int kFlags[] = {0, COLLECTION_LOAD_CLEAR, COLLECTION_LOAD_MERGE, COLLECTION_LOAD_CLEAR | COLLECTION_LOAD_MERGE};
    int flags = kFlags[data[0] % 4];
    std::vector<wchar_t> text(data + 1, data + size);

    IID iid = ISuperCollection::Iid();
    SmartPtr<ISuperCollection> face;
    CObject<CFuzzCollection>::_CreateInstance(nullptr, &iid, face.ReceiveVoid());
    auto* collection = static_cast<CFuzzCollection::Collection*>(face.get());
    // Names that a load may update or merge into, one a prefix of the other.
    collection->Add(Name(L"Verse1"), Make<IUnknown>(REFLiteral(L"FileInfo")), nullptr, 0);
    collection->Add(Name(L"Verse10"), Make<IUnknown>(REFLiteral(L"FileInfo")), nullptr, 3);
    if (data[0] & 4)
        collection->Sort(0, nullptr);

    auto reader = Make<IDataStream>(REFLiteral(L"XMLStream"));
    reader->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
    collection->Load(reader, flags);

    auto writer = Make<IDataStream>(REFLiteral(L"XMLStream"));
    writer->SetBuffer(nullptr, 0, 0);
    collection->Save(writer, 0);
    void* saved = nullptr;
    unsigned long bytes = 0;
    writer->GetBuffer(&saved, &bytes);
    std::vector<wchar_t> again(static_cast<wchar_t*>(saved), static_cast<wchar_t*>(saved) + bytes / sizeof(wchar_t));
    auto second = Make<IDataStream>(REFLiteral(L"XMLStream"));
    second->SetBuffer(again.data(), int(again.size() * sizeof(wchar_t)), 0);
    collection->Load(second, COLLECTION_LOAD_CLEAR);
    return 0;
}
