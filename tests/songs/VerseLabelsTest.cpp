// The labels of a song's verse displays come from the string table file. A song
// reads the table once while it cuts its text, and a later cut sees the file as it
// is then: changed, gone, or back.
#include "songs/SongSupport.h"
#include "support/Collections.h"

namespace {

using namespace vxtest;

class VerseLabelsTest : public SongTest {
protected:
    void TearDown() override
    {
        unsetenv("VX_STRINGTABLE");
        SongTest::TearDown();
    }
    // The labels of one display of every verse; "none" for a display without them.
    static std::vector<std::wstring> Labels(IVXSong* song, int code)
    {
        std::vector<std::wstring> all;
        for (int i = 0, count = Count(QueryAs<ISuperCollection>(song)); i < count; ++i) {
            SmartPtr<IUnknown> choices;
            std::wstring joined;
            auto verse = QueryAs<IUIPropInterrogateEx>(VerseAt(song, i).get());
            if (verse->ParameterEnumeration(code, choices.Receive()) < 0)
                joined = L"none";
            for (const std::wstring& name : ItemNames(choices))
                joined += (joined.empty() ? L"" : L"|") + name;
            all.push_back(joined);
        }
        return all;
    }
    TempFolder m_Folder;
};

TEST_F(VerseLabelsTest, EachCutReadsTheTableAsItIsThen)
{
    const auto table = m_Folder / "strings.ini";
    setenv("VX_STRINGTABLE", table.c_str(), 1);
    struct Step {
        const char* what;
        const char* file;  // null: the file is removed
        const wchar_t* labels;
    } steps[] = {
        {"first reading", "[VXSongVerse]\n30=Never|First|Last|All\n", L"Never|First|Last|All"},
        {"labels changed", "[VXSongVerse]\n30=Nie|Erst|Letzt|Immer\n", L"Nie|Erst|Letzt|Immer"},
        {"same size, other text", "[VXSongVerse]\n30=Nie|Erst|Letzt|Imxer\n", L"Nie|Erst|Letzt|Imxer"},
        {"another component only", "[VXBible]\n30=A|B\n", L"none"},
        {"file gone", nullptr, L"none"},
        {"file back", "[VXSongVerse]\n1=Verse number\n30=Only|Two\n", L"Only|Two"},
    };
    auto song = NewSong();
    auto other = NewSong();
    for (const Step& step : steps) {
        if (step.file)
            WriteBytes(table, step.file);
        else
            std::filesystem::remove(table);
        // A plain cut and a tagged one; both songs see the same file.
        SetText(song, L"One\n\nTwo\n\nThree\n");
        SetText(other, L"<verses><verse id=\"a\">A</verse><verse id=\"b\">B</verse></verses>");
        const std::vector<std::wstring> three(3, step.labels), two(2, step.labels);
        for (int code : {VERSE_HEADERDISPLAY, VERSE_FOOTERDISPLAY}) {
            EXPECT_EQ(Labels(song, code), three) << step.what;
            EXPECT_EQ(Labels(other, code), two) << step.what;
        }
    }
}

} // namespace
