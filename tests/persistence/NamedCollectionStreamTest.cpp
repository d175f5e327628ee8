// The named collection through real streams and files: the XML form and the
// folder form, with "FileInfo" objects as the persistent items.
#include <algorithm>

#include "persistence/ProbeCollection.h"
#include "support/Streams.h"
#include "support/Values.h"

using namespace vxtest;

namespace {

class NamedCollectionStreamTest : public ModuleTest {};

// One line per record: name, flags, the item's author, the attached one's author.
std::vector<std::wstring> Describe(ISuperCollection* collection)
{
    std::vector<std::wstring> lines;
    std::vector<std::wstring> names = Names(collection);
    for (int i = 0; i < int(names.size()); ++i) {
        int flags = 0;
        SmartPtr<IUnknown> item, attached;
        collection->get_ItemFlags(i, &flags);
        collection->get_Item(i, item.Receive());
        collection->get_ItemAttached(i, attached.Receive());
        lines.push_back(names[i] + L" " + std::to_wstring(flags) + L" " + Author(item) + L" " +
                        (attached ? Author(attached) : L"-"));
    }
    return lines;
}

// First (flags 5, with an attached object), an unnamed item, and Third.
Probe<IUnknown> Filled()
{
    auto c = MakeProbe();
    c->Add(Str(L"First"), Info(L"one"), Info(L"rider"), 5);
    c->Add(nullptr, Info(L"two"), nullptr, 0);
    c->Add(Str(L"Third"), Info(L"three"), nullptr, 0);
    return c;
}

// The collection's text in the XML form.
std::wstring SaveXML(const Probe<IUnknown>& c)
{
    auto stream = Create<IDataStream>(L"XMLStream");
    stream->SetBuffer(nullptr, 0, 0);
    EXPECT_EQ(c.self->Save(stream, 0), S_OK);
    return WideBuffer(stream);
}

int Occurrences(const std::wstring& text, const std::wstring& part)
{
    int count = 0;
    for (size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST_F(NamedCollectionStreamTest, XMLFormNamesElementsAndWritesOnlyFlagsThatAreSet)
{
    std::wstring text = SaveXML(Filled());
    for (const wchar_t* part : {L"<First>", L"<Item2>", L"<Third>", L"<Flags>", L"<Flags>5</Flags>", L"<AttachedItem>"})
        EXPECT_EQ(Occurrences(text, part), 1) << Narrow(part);
    EXPECT_LT(text.find(L"<Item2>"), text.find(L"<Third>"));
}

TEST_F(NamedCollectionStreamTest, XMLLoadFlagsDecideWhatIsAddedOrUpdated)
{
    std::wstring text = SaveXML(Filled());
    // sameFirst: First is still the object that was there.
    const struct { const char* what; int flags; std::vector<std::wstring> result; bool sameFirst; } cases[] = {
        // An item followed by its attached object is added twice: once without it.
        {"clear", COLLECTION_LOAD_CLEAR,
         {L"First 5 one -", L"First 5 one rider", L"Item2 0 two -", L"Third 0 three -"}, false},
        // Only names already there are touched.
        {"merge", COLLECTION_LOAD_MERGE, {L"Other 0 keep -", L"First 5 one rider"}, true},
        {"update", 0, {L"Other 0 keep -", L"First 5 one rider"}, false},
    };
    for (const auto& test : cases) {
        auto c = MakeProbe();
        c->Add(Str(L"Other"), Info(L"keep"), nullptr, 0);
        auto first = Info(L"old");
        c->Add(Str(L"First"), first, nullptr, 0);
        EXPECT_EQ(c.self->Load(XMLReader(text), test.flags), S_OK) << test.what;
        EXPECT_EQ(Describe(c.face), test.result) << test.what;
        int index = -1;
        EXPECT_EQ(c.self->get_ItemIndex(first, &index) == S_OK, test.sameFirst) << test.what;
    }
}

TEST_F(NamedCollectionStreamTest, FolderFormKeepsOrderFlagsAndAttachedObjects)
{
    TempFolder folder;
    auto saved = Create<IDataStream>(L"FolderStream");
    EXPECT_EQ(Filled().self->Save(saved, 0), S_OK);
    auto stream = ThroughFile(saved, folder / "items.zip");
    // The folder form starts afresh whatever the flags.
    auto c = MakeProbe();
    c->Add(Str(L"Gone"), Info(L"x"), nullptr, 0);
    EXPECT_EQ(c.self->Load(stream, COLLECTION_LOAD_MERGE), S_OK);
    EXPECT_EQ(Describe(c.face),
              (std::vector<std::wstring>{L"First 5 one rider", L"Item2 0 two -", L"Third 0 three -"}));
}

} // namespace

namespace {

// A stream that offers both forms and logs what is asked of it. Its XML face
// names the element "Item1" twice and can fetch nothing.
class CTwoFacedStream : public CObject<CTwoFacedStream>, public IXMLStream, public IFolderStream {
public:
    using Interfaces = QiList<Entry<IDataStream, IXMLStream>, Entry<IXMLStream>, Entry<IFolderStream>>;
    std::vector<std::string> m_Log;
    int m_Elements = 2;

    int32_t SetBuffer(void*, int, int) override { return S_OK; }
    int32_t Skip(int, int, int) override
    {
        --m_Elements;
        return Log("Skip");
    }
    int32_t GetBuffer(void**, unsigned long*) override { return E_FAIL; }
    int32_t Write(const void*, int, int) override { return S_OK; }
    int32_t ResetAttributes(int, int, int) override { return S_OK; }
    int32_t OpenElement(IString*, int, int) override { return Log("OpenElement"); }
    int32_t OpenObject(IUnknown*, int, int) override { return S_OK; }
    int32_t PutAttribute(IString*, int, IString*, int) override { return S_OK; }
    int32_t CloseElement() override { return S_OK; }
    int32_t NextAttribute(tagREFString* name) override
    {
        // Bounded, so that a load that never steps on still ends here.
        if (m_Elements <= 0 || m_Log.size() > 50)
            return E_FAIL;
        *name = CREFString(L"Item1");
        return Log("NextAttribute");
    }
    int32_t GetAttribute(tagREFString, tagREFString*, IUnknown**, int) override { return Log("GetAttribute", E_FAIL); }
    int32_t ReadObject(IUnknown**) override { return E_FAIL; }
    int32_t ReadObjectOfClass(tagREFString, IUnknown**) override { return E_FAIL; }
    int32_t put_Mode(int, int) override { return S_OK; }
    int32_t CreateFolder(IString*, int, IDataStream**) override { return Log("CreateFolder", E_FAIL); }
    int32_t CreateBlock(IString*) override { return E_FAIL; }
    int32_t WriteData(IString*, const void*, int, int) override { return E_FAIL; }
    int32_t WriteString(IString*, IUnknown*) override { return E_FAIL; }
    int32_t WriteObject(IString*, IUnknown*, int) override { return E_FAIL; }
    int32_t OpenBlock(IString*) override { return E_FAIL; }
    int32_t ReadData(IString*, void*, int, int) override { return E_FAIL; }
    int32_t ReadString(IString*, IUnknown*) override { return E_FAIL; }
    int32_t OpenFolder(IUnknown*, int, IDataStream**) override { return E_FAIL; }
    int32_t ReadObject(IString*, IUnknown**, int) override { return E_FAIL; }

private:
    int32_t Log(const char* what, int32_t result = S_OK)
    {
        m_Log.push_back(what);
        return result;
    }
};

TEST_F(NamedCollectionStreamTest, AStreamOfBothFormsIsWrittenInOneAndReadInBoth)
{
    SmartPtr<IXMLStream> stream;
    IID iid = IXMLStream::Iid();
    ASSERT_EQ(CObject<CTwoFacedStream>::_CreateInstance(nullptr, &iid, stream.ReceiveVoid()), S_OK);
    auto* probe = static_cast<CTwoFacedStream*>(stream.get());
    auto collection = Filled();

    ASSERT_EQ(collection.self->Save(stream, 0), S_OK);
    std::vector<std::string> saved = probe->m_Log;
    EXPECT_EQ(std::count(saved.begin(), saved.end(), "OpenElement"), 4) << "three items, one attached";
    EXPECT_EQ(std::count(saved.begin(), saved.end(), "CreateFolder"), 0) << "the XML form alone is written";

    // Loading reads the XML form, stepping past each element it can't fetch so
    // that the walk ends, then the folder form, which clears the collection.
    probe->m_Log.clear();
    ASSERT_EQ(collection.self->Load(stream, 0), S_OK);
    const std::vector<std::string> loaded = {"NextAttribute", "GetAttribute", "Skip",
                                             "NextAttribute", "GetAttribute", "Skip"};
    EXPECT_EQ(probe->m_Log, loaded);
    EXPECT_EQ(Names(collection.face).size(), 0u) << "the folder form was read too, and starts afresh";
}

} // namespace
