// The named collection through real streams and files: the XML form and the
// folder form, with "FileInfo" objects as the persistent items.
#include "persistence/ProbeCollection.h"

using vxtest::Str;
using vxtest::Text;

namespace {

class NamedCollectionStreamTest : public vxtest::ModuleTest {};

SmartPtr<IUnknown> Info(const std::wstring& author)
{
    auto info = vxtest::Create<IFileInfo>(L"FileInfo");
    info->put_Author(CREFString(author.data(), int32_t(author.size())));
    info->put_Time(1000);
    return SmartPtr<IUnknown>(info.get());
}

std::wstring Author(IUnknown* object)
{
    SmartPtr<IString> author;
    if (auto info = QueryAs<IFileInfo>(object))
        info->get_Author(author.Receive());
    return Text(author);
}

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

// Saves the collection in the XML form to a file and gives back the file's text.
std::wstring SaveXMLFile(const Probe<IUnknown>& c, const vxtest::TempFolder& folder)
{
    auto stream = vxtest::Create<IDataStream>(L"XMLStream");
    stream->SetBuffer(nullptr, 0, 0);
    EXPECT_EQ(c.self->Save(stream, 0), S_OK);
    void* data = nullptr;
    unsigned long size = 0;
    stream->GetBuffer(&data, &size);
    vxtest::WriteBytes(folder / "items.xml", std::string(static_cast<const char*>(data), size));
    std::string bytes = vxtest::ReadBytes(folder / "items.xml");
    return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
}

SmartPtr<IDataStream> XMLReader(std::wstring& text)
{
    auto stream = vxtest::Create<IDataStream>(L"XMLStream");
    stream->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
    return stream;
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
    vxtest::TempFolder folder;
    std::wstring text = SaveXMLFile(Filled(), folder);
    for (const wchar_t* part : {L"<First>", L"<Item2>", L"<Third>", L"<Flags>", L"<Flags>5</Flags>", L"<AttachedItem>"})
        EXPECT_EQ(Occurrences(text, part), 1) << vxtest::Narrow(part);
    EXPECT_LT(text.find(L"<Item2>"), text.find(L"<Third>"));
}

TEST_F(NamedCollectionStreamTest, XMLLoadFlagsDecideWhatIsAddedOrUpdated)
{
    vxtest::TempFolder folder;
    std::wstring text = SaveXMLFile(Filled(), folder);
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
    vxtest::TempFolder folder;
    auto path = Str((folder / "items.zip").wstring());
    {
        auto stream = vxtest::Create<IDataStream>(L"FolderStream");
        EXPECT_EQ(Filled().self->Save(stream, 0), S_OK);
        auto archive = stream.As<IFileArchive>();
        archive->put_Filename(path);
        ASSERT_EQ(archive->Save(), S_OK);
    }
    auto stream = vxtest::Create<IDataStream>(L"FolderStream");
    auto archive = stream.As<IFileArchive>();
    archive->put_Filename(path);
    ASSERT_EQ(archive->Load(), S_OK);
    // The folder form starts afresh whatever the flags.
    auto c = MakeProbe();
    c->Add(Str(L"Gone"), Info(L"x"), nullptr, 0);
    EXPECT_EQ(c.self->Load(stream, COLLECTION_LOAD_MERGE), S_OK);
    EXPECT_EQ(Describe(c.face),
              (std::vector<std::wstring>{L"First 5 one rider", L"Item2 0 two -", L"Third 0 three -"}));
}

} // namespace
