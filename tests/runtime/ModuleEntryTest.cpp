// The module's entry as a host meets it: lookups by name, and the shared collection.
#include <dlfcn.h>

#include "support/Fixture.h"

namespace {

class ModuleEntry : public vxtest::ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        m_Handle = dlopen("./_binlinux/VXCore.so", RTLD_NOW);
        ASSERT_NE(m_Handle, nullptr) << dlerror();
        m_Lookup = reinterpret_cast<VXCreateFunctionLookup>(dlsym(m_Handle, "CreateFunction"));
        m_Initialize = reinterpret_cast<VXInitializeModule>(dlsym(m_Handle, "InitializeModule"));
        ASSERT_NE(m_Lookup, nullptr);
        ASSERT_NE(m_Initialize, nullptr);
    }

    void* m_Handle = nullptr;
    VXCreateFunctionLookup m_Lookup = nullptr;
    VXInitializeModule m_Initialize = nullptr;
};

TEST_F(ModuleEntry, LookupByExactName)
{
    // a length of -1 takes the name's own
    struct Case { std::wstring name; int length; bool found; } cases[] = {
        {L"VXSong", -1, true},
        {L"VXSongVerse", -1, true},
        {L"VXsong", -1, false},         // case counts
        {L"VXSon", -1, false},          // no prefix match
        {L"VXSongs", -1, false},
        {L"VXBibleChapter", -1, false}, // lives only inside a book
        {L"VXSongVerseX", 11, true},    // no terminator is needed
        {L"", -1, false},
    };
    for (const Case& c : cases) {
        void* sentinel = reinterpret_cast<void*>(0x1234);
        void* function = sentinel;
        int length = c.length < 0 ? int(c.name.size()) : c.length;
        EXPECT_EQ(m_Lookup(CREFString(c.name.data(), length), &function), c.found ? S_OK : E_FAIL)
            << vxtest::Narrow(c.name);
        if (!c.found) {
            EXPECT_EQ(function, sentinel) << "a failed lookup leaves the output alone";
            continue;
        }
        // What is found makes the object, with the faces it has and no others.
        ASSERT_NE(function, sentinel);
        auto create = reinterpret_cast<VXCreateFunction>(function);
        SmartPtr<IUnknown> made, none;
        IID iid = IID_IUnknown, missing = IID_IFolderStream;
        EXPECT_EQ(create(nullptr, &iid, made.ReceiveVoid()), S_OK);
        EXPECT_TRUE(made);
        EXPECT_EQ(create(nullptr, &missing, none.ReceiveVoid()), E_NOINTERFACE);
        EXPECT_FALSE(none);
    }
}

// A collection that only counts its references.
class CountingCollection : public IComponentCollection {
public:
    int32_t QueryInterface(const IID&, void** out) override
    {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    int32_t AddRef() override { return ++m_Count; }
    int32_t Release() override { return --m_Count; }
    int32_t get_Count(int*) override { return E_NOTIMPL; }
    int32_t get_Item(int, IUnknown**) override { return E_NOTIMPL; }
    int32_t get_Index(IUnknown*, int*) override { return E_NOTIMPL; }
    int32_t CreateObject(tagREFString, IID*, void**) override { return E_NOTIMPL; }
    int m_Count = 1;
};

TEST_F(ModuleEntry, OneSharedCollectionHeldOnceAndLoadedAgainWhenCleared)
{
    CountingCollection probe;
    EXPECT_EQ(m_Initialize(nullptr, &probe), 0);
    EXPECT_EQ(probe.m_Count, 2);
    // The same collection again: added before the old one is dropped, never dying in between.
    EXPECT_EQ(m_Initialize(nullptr, &probe), 0);
    EXPECT_EQ(probe.m_Count, 2);
    EXPECT_EQ(m_Initialize(nullptr, nullptr), 0);
    EXPECT_EQ(probe.m_Count, 1);

    // Cleared, the process's collection is loaded again: one collection, however reached.
    auto first = SmartPtr<IComponentCollection>::Adopt(GLOBALComponents());
    ModuleInitialize(nullptr);
    EXPECT_FALSE(gGlobalComponentCollection);
    auto second = SmartPtr<IComponentCollection>::Adopt(GLOBALComponents());
    ASSERT_TRUE(first && second);
    EXPECT_TRUE(SmartPtr<IUnknown>(first.get()) == second.get());
    m_Initialize(nullptr, second); // the module gets the process's collection back
}

TEST_F(ModuleEntry, RecordsByNameAndByCreation)
{
    auto name = vxtest::Str(L"VXSongVerse");
    auto record = SmartPtr<IComponentString>::Adopt(GetComponentString(name));
    ASSERT_TRUE(record);
    SmartPtr<IString> module;
    ASSERT_EQ(record->get_Field(COMPONENT_FIELD_MODULE, module.Receive()), S_OK);
    EXPECT_EQ(vxtest::Text(module), L"VXCore");
    SmartPtr<IVXSongVerse> verse;
    EXPECT_EQ(record->CreateObject(IID_IVXSongVerse, verse.ReceiveVoid()), S_OK);
    EXPECT_TRUE(verse);
    EXPECT_EQ(GetComponentString(vxtest::Str(L"NoSuchThing")), nullptr);
    EXPECT_EQ(CreateObject(REFLiteral(L"NoSuchThing"), const_cast<IID*>(&IID_IUnknown)), nullptr);
}

} // namespace
