// Parameters through every stream form, against the framework's real streams: what
// each form writes, what comes back, the file names that survive a move of the
// installation, and the differences between the forms that are kept on purpose.
#include <cstring>

#include "persistence/ParametersStream.h"
#include "support/Collections.h"
#include "support/ScopedRegistry.h"
#include "support/Streams.h"
#include "support/Values.h"

using namespace vxtest;
namespace fs = std::filesystem;

namespace {

// "name type value flags descriptor" for each item; type i, d, s or o(bject).
std::vector<std::wstring> Describe(IParameters* parameters)
{
    std::vector<std::wstring> lines;
    for (int i = 0; i < Count(parameters); ++i) {
        SmartPtr<IString> name;
        SmartPtr<IVariant> value;
        SmartPtr<IUnknown> descriptor;
        int flags = 0;
        parameters->Iterate(i, name.Receive(), value.Receive(), descriptor.Receive(), &flags);
        std::wstring line = Text(name) + L" ";
        if (!value) {
            line += L"- -";
        } else if (value->IsString()) {
            SmartPtr<IString> text;
            value->get_String(text.Receive());
            line += L"s " + Text(text);
        } else if (value->get_Type() == VARIANT_INTEGER) {
            line += L"i " + std::to_wstring(value->get_Integer());
        } else if (value->get_Type() == VARIANT_DOUBLE) {
            line += L"d " + std::to_wstring(value->get_Double());
        } else {
            SmartPtr<IUnknown> object;
            value->get_Object(object.Receive());
            line += L"o " + Author(object);
        }
        line += L" " + std::to_wstring(flags) + L" " + (descriptor ? Author(descriptor) : L"-");
        lines.push_back(line);
    }
    return lines;
}

struct Row { const wchar_t* m_Name; SmartPtr<IUnknown> m_Value; int m_Flags; SmartPtr<IUnknown> m_Descriptor; };

SmartPtr<IParameters> Make(const std::vector<Row>& rows)
{
    auto parameters = Create<IParameters>(L"ParametersCreatable");
    for (const Row& row : rows)
        parameters.As<IParametersCreatable>()->Add(Str(row.m_Name), row.m_Value, row.m_Descriptor, row.m_Flags);
    return parameters;
}

std::wstring SaveXML(IParameters* parameters, int mode, bool objectsOnly = false)
{
    auto stream = Create<IDataStream>(L"XMLStream");
    stream->SetBuffer(nullptr, 0, 0);
    EXPECT_EQ(objectsOnly ? parameters->Params_SaveXMLUnk(stream, mode) : parameters->Params_SaveXML(stream, mode),
              S_OK);
    return WideBuffer(stream);
}

class ParametersStreamTest : public ModuleTest {
protected:
    void UseInstallPath(const std::string& path)
    {
        WriteBytes(m_Registry, "[Workspace]\nInstallPath=" + path + "\n[Mappings]\nSongs=/home/u/songs\n");
    }

    TempFolder m_Folder;
    fs::path m_Registry = m_Folder / "registry.ini";
    ScopedRegistry m_Scope{m_Registry};
};

TEST_F(ParametersStreamTest, XMLFormsOfOneItem)
{
    // m_Expected absent: a text the form must not hold.
    struct Case { const char* m_What; Row m_Row; int m_Mode; const wchar_t* m_Expected; bool m_Absent = false; };
    const Case cases[] = {
        {"compact number loses its type flag", {L"Count", Var(7), 3, {}}, PARAMS_COMPACT, L"<Count>7</Count>"},
        {"colour goes red first", {L"Colour", Var(0x123456), 35, {}}, PARAMS_COMPACT, L"<Colour>#563412</Colour>"},
        {"plain string is an attribute", {L"Note", Var(std::wstring(L"a<b")), 0, {}}, 0, L"<Note>a&lt;b</Note>"},
        {"flags make an element", {L"Path", Var(std::wstring(L"x")), 0x16, {}}, 0,
         L"<Path><Value>x</Value><Flags>#000016</Flags></Path>"},
        {"transient bit is dropped", {L"Size", Var(4), 0x8000000, {}}, 0, L"<Size>4</Size>"},
        {"not-compact item of no value type keeps its flags", {L"Odd", Var(1), 0x40004, {}}, PARAMS_COMPACT,
         L"<Odd><Value>1</Value><Flags>#040004</Flags></Odd>"},
        {"not-compact number is an attribute", {L"N", Var(2), 0x40003, {}}, PARAMS_COMPACT, L"<N>2</N>"},
        {"double in its shortest form", {L"R", Var(2.5), 5, {}}, PARAMS_COMPACT, L"<R>2.5</R>"},
        {"descriptor saved", {L"Item", Var(1), 0x40, Info(L"ann")}, 0, L"ann"},
        {"compact drops the descriptor", {L"Item", Var(1), 0x40, Info(L"ann")}, PARAMS_COMPACT, L"ann", true},
    };
    for (const Case& c : cases) {
        auto parameters = Make({c.m_Row});
        std::wstring xml;
        // Without the writer's line breaks and indenting.
        for (wchar_t ch : SaveXML(parameters, c.m_Mode)) {
            if (ch == L'<')
                while (!xml.empty() && xml.back() == L' ')
                    xml.pop_back();
            if (ch != L'\n' && ch != L'\r')
                xml += ch;
        }
        EXPECT_EQ(xml.find(c.m_Expected) == std::wstring::npos, c.m_Absent) << c.m_What << ": " << Narrow(xml);
    }
}

// Replace mode takes every type from the text alone; flags and descriptors are lost.
TEST_F(ParametersStreamTest, XMLReplaceLoadTypesFromText)
{
    auto source = Make({{L"A", Var(std::wstring(L"1.5")), 0, {}},
                        {L"B", Var(std::wstring(L"1234567890")), 0, {}},
                        {L"C", Var(std::wstring(L"-4")), 0, {}},
                        {L"D", Var(std::wstring(L"text")), 0, {}},
                        {L"E", Var(9), 0x16, Info(L"gone")}});
    std::wstring xml = SaveXML(source, 0);
    auto loaded = Make({{L"Old", Var(1), 0, {}}});
    EXPECT_EQ(loaded->Params_LoadXML(XMLReader(xml), PARAMS_REPLACE, 0), S_OK);
    std::vector<std::wstring> expected = {L"A d 1.500000 0 -", L"B s 1234567890 0 -", L"C i -4 0 -",
                                          L"D s text 0 -"};
    std::vector<std::wstring> got = Describe(loaded);
    ASSERT_EQ(got.size(), 5u);
    got.pop_back(); // E: an element's whole text, no number
    EXPECT_EQ(got, expected);
}

TEST_F(ParametersStreamTest, XMLLoadInPlaceUpdatesKnownNamesOnly)
{
    auto source = Make({{L"count", Var(9), 0x10, {}}, {L"Stranger", Var(1), 0, {}}, {L"Plain", Var(5), 0, {}}});
    std::wstring xml = SaveXML(source, 0);
    auto loaded = Make({{L"Count", Var(1), 3, {}}, {L"Plain", Var(std::wstring(L"old")), 6, {}}});
    EXPECT_EQ(loaded->Params_LoadXML(XMLReader(xml), 0, 0), S_OK);
    EXPECT_EQ(Describe(loaded), (std::vector<std::wstring>{L"Count i 9 16 -", L"Plain i 5 6 -"}));
}

// Every type, flags, an object value and a descriptor come back from a file; the compact
// form drops what the flags say.
TEST_F(ParametersStreamTest, FolderFormInReplaceMode)
{
    UseInstallPath("/opt/a");
    const struct { int m_Mode; std::vector<Row> m_Rows; std::vector<std::wstring> m_Loaded; } cases[] = {
        {0,
         {{L"Number", Var(42), 0, {}}, {L"Real", Var(0.25), 0, {}}, {L"Text", Var(std::wstring(L"Grüße")), 0, {}},
          {L"Flagged", Var(std::wstring(L"v")), 0x200, Info(L"desc")}, {L"Object", Info(L"obj"), 0, {}},
          {L"", Var(1), 0, {}}, {L"Never", Var(1), 0x4000000, {}}},
         {L"Number i 42 0 -", L"Real d 0.250000 0 -", L"Text s Grüße 0 -", L"Flagged s v 512 desc",
          L"Object o obj 0 -", L"Item6 i 1 0 -"}},
        {PARAMS_COMPACT,
         {{L"Number", Var(3), 3, {}}, {L"Skipped", Var(1), 0x40001, {}}, {L"Descr", Var(2), 0x41, Info(L"dropped")},
          {L"Kept", Var(std::wstring(L"k")), 0x1, {}}},
         {L"Number i 3 0 -", L"Descr i 2 0 -", L"Kept s k 1 -"}},
    };
    for (const auto& c : cases) {
        auto stream = Create<IDataStream>(L"FolderStream");
        EXPECT_EQ(Make(c.m_Rows)->Params_SaveFolderStream(stream, c.m_Mode), S_OK);
        auto loaded = Make({{L"Old", Var(1), 0, {}}});
        EXPECT_EQ(loaded->Params_LoadFolderStream(ThroughFile(stream, m_Folder / "p.zip"), PARAMS_REPLACE), S_OK);
        EXPECT_EQ(Describe(loaded), c.m_Loaded) << c.m_Mode;
    }
}

// A file name saved under one installation comes back under the moved one.
TEST_F(ParametersStreamTest, FileNamesSurviveAMoveOfTheInstallation)
{
    struct Case { const char* m_What; const wchar_t* m_Path; int m_Flags; int m_Mode; const wchar_t* m_Loaded;
        int m_SavedFlags; };
    const Case cases[] = {
        {"mapped", L"/opt/a/songs/x.sng", 0x6, PARAMS_REPLACE, L"/srv/b/songs/x.sng", 0x6},
        {"relative below the install path", L"/opt/a/songs/x.sng", 0x16, PARAMS_REPLACE, L"/srv/b/songs/x.sng",
         0x116},
        {"user mapping", L"/home/u/songs/y.sng", 0x26, PARAMS_REPLACE, L"/home/u/songs/y.sng", 0x26},
        {"outside stays, separators turned", L"C:\\data\\z.txt", 0x16, PARAMS_REPLACE, L"C:/data/z.txt", 0x16},
        {"in place: mapped", L"/opt/a/x", 0x6, 0, L"/srv/b/x", 0x6},
        {"in place: kept path keeps its separators turned", L"a\\b", 0x16, 0, L"a/b", 0x16},
    };
    for (const Case& c : cases) {
        UseInstallPath("/opt/a");
        auto source = Make({{L"File", Var(std::wstring(c.m_Path)), c.m_Flags, {}}});
        auto stream = Create<IDataStream>(L"FolderStream");
        source->Params_SaveFolderStream(stream, 0);
        auto saved = ThroughFile(stream, m_Folder / "f.zip");
        UseInstallPath("/srv/b");
        auto loaded = Make({{L"File", Var(std::wstring(L"before")), 0, {}}});
        loaded->Params_LoadFolderStream(saved, c.m_Mode);
        SmartPtr<IUnknown> value;
        loaded->get_Item(0, value.Receive());
        EXPECT_EQ(Text(value), c.m_Loaded) << c.m_What;
        int flags = 0;
        SmartPtr<IDataStream> sub;
        QueryAs<IFolderStream>(saved.get())->OpenFolder(Str(L"File"), 0, sub.Receive());
        QueryAs<IFolderStream>(sub.get())->ReadData(Str(L"Flags"), &flags, 4, 0);
        EXPECT_EQ(flags, c.m_SavedFlags) << c.m_What;
    }
}

// Two bytes a character from the start of each wide text: the first half of it.
TEST_F(ParametersStreamTest, CSVLineKeepsItsHalfWidthWriting)
{
    auto parameters = Make({{L"a", Var(1), 0, {}}, {L"b", Var(std::wstring(L"xy")), 0, {}}, {L"c", Var(2), 0x40000, {}}});
    const struct { int m_Mode; std::string m_Bytes; } cases[] = {
        {PARAMS_WITHNAMES | PARAMS_COMPACT, std::string("a\0=\0" "1\0" ",\0" "b\0=\0" "x\0\0\0", 16)},
        {0, std::string("1\0" ",\0" "x\0\0\0" ",\0" "2\0", 12)},
    };
    for (const auto& c : cases) {
        auto stream = Create<IDataStream>(L"CSVStream");
        stream->SetBuffer(nullptr, 0, 0);
        EXPECT_EQ(parameters->Params_SaveCSV(stream, c.m_Mode), S_OK);
        EXPECT_EQ(Buffer(stream), c.m_Bytes) << c.m_Mode;
    }
    // A stream of the wrong kind changes nothing, also in replace mode.
    auto xml = Create<IDataStream>(L"XMLStream");
    EXPECT_EQ(parameters->Params_SaveCSV(xml, 0), S_OK);
    EXPECT_EQ(parameters->Params_LoadFolderStream(xml, PARAMS_REPLACE), S_OK);
    EXPECT_EQ(parameters->Params_LoadXMLUnk(Create<IDataStream>(L"FolderStream"), PARAMS_REPLACE), S_OK);
    EXPECT_EQ(Count(parameters), 3);
}

TEST_F(ParametersStreamTest, ObjectsOnlyXMLRoundTrip)
{
    auto source = Make({{L"First", Info(L"one"), 0x21, Info(L"rider")},
                        {L"Plain", Var(5), 0, {}},
                        {L"", Info(L"two"), 0, {}}});
    std::wstring xml = SaveXML(source, 0, true);
    EXPECT_EQ(xml.find(L"Plain"), std::wstring::npos);
    auto replaced = Make({{L"Old", Var(1), 0, {}}});
    replaced->Params_LoadXMLUnk(XMLReader(xml), PARAMS_REPLACE);
    EXPECT_EQ(Describe(replaced), (std::vector<std::wstring>{L"First o one 33 rider", L"Item3 o two 0 -"}));

    // In place, by name: the present object loads what was saved.
    auto present = Info(L"blank");
    auto inPlace = Make({{L"First", present, 0, {}}});
    inPlace->Params_LoadXMLUnk(XMLReader(xml), PARAMS_BYNAME);
    EXPECT_EQ(Author(present), L"one");
    EXPECT_EQ(Describe(inPlace), (std::vector<std::wstring>{L"First o one 33 rider"}));
}

} // namespace
