// INI files as parameters: sections, keys in other case, 16-bit saving with a mark and
// reading back, and files in the encodings the system writes.
#include "support/Collections.h"
#include "support/TextBytes.h"
#include "support/Values.h"

using namespace vxtest;

namespace {

class INIFileTest : public ModuleTest {
protected:
    SmartPtr<IFileArchive> Open(const std::filesystem::path& file)
    {
        auto ini = Create<IFileArchive>(L"INIFile");
        EXPECT_TRUE(ini);
        ini->put_Filename(Str(file.wstring()));
        return ini;
    }

    static void Choose(IFileArchive* ini, const wchar_t* section)
    {
        QueryAs<IINIFile>(ini)->put_Section(Str(section));
    }

    // The value of key in the chosen section, or "<none>".
    static std::wstring Value(IFileArchive* ini, const wchar_t* key)
    {
        auto parameters = QueryAs<IParameters>(ini);
        int index = -1;
        if (parameters->get_Index(Str(key), &index) < 0)
            return L"<none>";
        SmartPtr<IUnknown> item;
        parameters->get_Item(index, item.Receive());
        return Text(item);
    }

    TempFolder m_Folder;
};

TEST_F(INIFileTest, SavesSixteenBitTextWithMarkAndReadsItBack)
{
    auto file = m_Folder / "bible.ini";
    auto ini = Open(file);
    Choose(ini, L"Bible");
    auto creatable = ini.As<IParametersCreatable>();
    creatable->Add(Str(L"abbreviation"), Str(L"KJV"), nullptr, 0);
    creatable->Add(Str(L"1"), Str(L"Genesis"), nullptr, 0);
    creatable->Add(Str(L"Count"), Var(7), nullptr, 0);
    Choose(ini, L"Text");
    // A character of each width, and blanks that only quotes keep.
    const std::wstring awkward = L" caf\u00e9 \uac00 \U0001F600 ";
    creatable->Add(Str(L"Awkward"), Str(awkward), nullptr, 0);
    Choose(ini, L"Unused");
    ASSERT_EQ(ini->Save(), S_OK);

    std::string bytes = ReadBytes(file);
    ASSERT_GE(bytes.size(), 4u);
    EXPECT_EQ(bytes.substr(0, 4), std::string("\xFF\xFE[\0", 4));
    EXPECT_EQ(bytes.find(std::string("U\0n\0u\0s\0e\0d\0", 12)), std::string::npos) << "an empty section is left out";

    auto again = Open(file);
    ASSERT_EQ(again->Load(), S_OK);
    Choose(again, L"BIBLE");
    EXPECT_EQ(Count(again.As<IParameters>()), 3);
    EXPECT_EQ(Value(again, L"Abbreviation"), L"KJV");
    EXPECT_EQ(Value(again, L"1"), L"Genesis");
    EXPECT_EQ(Value(again, L"count"), L"7");
    Choose(again, L"text");
    EXPECT_EQ(Value(again, L"awkward"), awkward);
}

TEST_F(INIFileTest, ReadsTheEncodingsTheSystemWrites)
{
    const struct { const char* m_Case; std::string m_Bytes; } cases[] = {
        {"UTF-8", "[Bible]\nAbbreviation=L\xC3\xB6\n"},
        {"UTF-8 with mark and CR LF", "\xEF\xBB\xBF[Bible]\r\nAbbreviation = L\xC3\xB6\r\n"},
        {"UTF-16 with mark", Utf16(L"[Bible]\nAbbreviation=L\u00f6")},
    };
    for (const auto& c : cases) {
        auto file = m_Folder / "in.ini";
        WriteBytes(file, c.m_Bytes);
        auto ini = Open(file);
        Choose(ini, L"bible");
        ASSERT_EQ(ini->Load(), S_OK) << c.m_Case;
        EXPECT_EQ(Value(ini, L"abbreviation"), L"L\u00f6") << c.m_Case;
    }
}

TEST_F(INIFileTest, FilesThatCannotBeReadFailAndKeepWhatWasThere)
{
    auto good = m_Folder / "good.ini";
    WriteBytes(good, "[A]\nk=v\n");
    auto ini = Open(good);
    ASSERT_EQ(ini->Load(), S_OK);
    const struct { const char* m_Case; bool m_Exists; std::string m_Bytes; } cases[] = {
        {"missing", false, ""},
        {"empty", true, ""},
        {"binary", true, Bytes("\x7F" "ELF\x02\x01\x01\0\0\0\0\0\0\0\0\0\x03\0")},
    };
    for (const auto& c : cases) {
        auto file = m_Folder / "bad.ini";
        std::filesystem::remove(file);
        if (c.m_Exists)
            WriteBytes(file, c.m_Bytes);
        ini->put_Filename(Str(file.wstring()));
        EXPECT_LT(ini->Load(), 0) << c.m_Case;
        Choose(ini, L"a");
        EXPECT_EQ(Value(ini, L"K"), L"v") << c.m_Case;
    }
}

TEST_F(INIFileTest, SectionChosenBeforeLoadAndKeysOfOneNameMeetTheFirst)
{
    auto file = m_Folder / "twice.ini";
    WriteBytes(file, "[Bible]\n1=Genesis\n[Other]\n1=Elsewhere\n[bible]\n1=Again\n2=Exodus\n");
    auto ini = Open(file);
    Choose(ini, L"Bible");
    ASSERT_EQ(ini->Load(), S_OK);
    EXPECT_EQ(Count(ini.As<IParameters>()), 3) << "a section met twice is one section";
    EXPECT_EQ(Value(ini, L"1"), L"Genesis");
    EXPECT_EQ(Value(ini, L"2"), L"Exodus");
    Choose(ini, L"Nowhere");
    EXPECT_EQ(Count(ini.As<IParameters>()), 0);
}

} // namespace
