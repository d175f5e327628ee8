// Any bytes as a folder stream's file: loaded, and when that works, everything that
// loaded is walked and read the way the module reads it. The same bytes also go in
// through SetBuffer, without the file.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

namespace {

template <class I> SmartPtr<I> Make(tagREFString component)
{
    IID iid = I::Iid();
    return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(component, &iid))));
}

void Walk(IFolderStream* folder, int depth)
{
    auto collection = QueryAs<INamedCollection>(folder);
    int count = 0;
    if (!collection || collection->get_Count(&count) < 0)
        return;
    auto position = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    for (int i = 0; i < count && i < 64; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> item;
        collection->get_ItemName(i, name.Receive());
        collection->get_Item(i, item.Receive());
        int index = -1;
        collection->get_Index(name, &index);
        if (auto sub = QueryAs<IFolderStream>(item.get())) {
            if (depth < 8)
                Walk(sub, depth + 1);
            // Read into an object given, never into one made by a name from the input.
            auto info = Make<IUnknown>(REFLiteral(L"FileInfo"));
            IUnknown* target = info.Copy();
            folder->ReadObject(name, &target, 0);
            if (target)
                target->Release();
            continue;
        }
        unsigned char data[16];
        folder->ReadData(name, data, int(sizeof(data)), 0);
        auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
        folder->ReadString(name, variant);
        auto text = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
        folder->ReadString(name, text);
        void* bytes = nullptr;
        unsigned long size = 0;
        if (folder->OpenBlock(name) >= 0 && folder->GetBuffer(&bytes, &size) >= 0 && size > 0) {
            volatile unsigned char last = static_cast<unsigned char*>(bytes)[size - 1];
            (void)last;
        }
    }
    for (int i = 0; i < 4; ++i) {
        position->put_Integer(i);
        SmartPtr<IDataStream> sub;
        folder->OpenFolder(position, 0, sub.Receive());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count)
{
    static const std::string path = "/tmp/vx-fuzz-folder-stream-" + std::to_string(getpid()) + ".tBL";
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return 0;
    std::fwrite(bytes, 1, count, file);
    std::fclose(file);

    auto stream = Make<IFolderStream>(REFLiteral(L"FolderStream"));
    if (!stream)
        return 0;
    auto archive = QueryAs<IFileArchive>(stream.get());
    std::wstring wide(path.begin(), path.end());
    auto name = SmartPtr<IString>::Adopt(ISCreate(CREFString(wide.data(), int32_t(wide.size()))));
    archive->put_Filename(name);
    int32_t loaded = archive->Load();
    std::remove(path.c_str());
    if (loaded >= 0)
        Walk(stream, 0);

    auto direct = Make<IFolderStream>(REFLiteral(L"FolderStream"));
    if (direct->SetBuffer(const_cast<uint8_t*>(bytes), int(count), 0) >= 0)
        Walk(direct, 0);
    return 0;
}
