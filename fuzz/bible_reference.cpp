// Any text typed at the sample Bible: as a reference or a list of references, as a
// phrase, and as a refinement of the last hits, with a tree to select rows in.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ParamsFuzz.h"
#include "FuzzTouch.h"

namespace {

// What Find is asked to do, picked by the first byte.
const int kFlags[] = {0, 0x400, 1, 0x101, 0x100, 0x401};

// The sample Bible lies beside this file's folder in the source tree.
std::wstring SampleBible()
{
    std::string file = __FILE__;
    std::string folder = file.substr(0, file.rfind('/') + 1) + "../samples/bible";
    return std::wstring(folder.begin(), folder.end());
}

SmartPtr<IVXSearch> gBible;
SmartPtr<IUINodeContainer> gTree;

void Cut()
{
    // The tree holds the Bible as its root until it is cut.
    if (gBible)
        QueryAs<IUIManager>(gBible.get())->put_UserInterface(nullptr);
    gTree = nullptr;
    gBible = nullptr;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    gBible = FuzzMake<IVXSearch>(REFLiteral(L"VXBible"));
    auto file = QueryAs<IFileArchive>(gBible.get());
    auto name = SmartPtr<IString>::Adopt(ISCreate(SampleBible().c_str()));
    file->put_Filename(name);
    file->Load();
    gTree = FuzzMake<IUINodeContainer>(REFLiteral(L"UITree"));
    QueryAs<IUIManager>(gBible.get())->put_UserInterface(gTree);
    std::atexit(Cut);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1 || size > 4096)
        return 0;
    int flags = kFlags[data[0] % (sizeof(kFlags) / sizeof(kFlags[0]))];
    auto text = SmartPtr<IString>::Adopt(ISCreate(reinterpret_cast<const char*>(data + 1), int(size - 1)));
    SmartPtr<IUnknown> result;
    gBible->Find(text, flags, result.Receive());
    Touch(result);
    if (auto hits = QueryAs<ISimpleCollection>(result.get())) {
        int count = 0;
        hits->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> hit;
            hits->get_Item(i, hit.Receive());
            Touch(hit);
        }
    }
    // The selected row must be one the tree has.
    SmartPtr<IUnknown> root;
    QueryAs<IUITree>(gTree.get())->GetSelection(0, 2, root.Receive());
    return 0;
}
