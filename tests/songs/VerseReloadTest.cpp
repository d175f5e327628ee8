// A verse saved in a show's folder stream fetches its text from its song's file
// again when loaded, unless its text was edited by hand.
#include "songs/SongSupport.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;

class VerseReloadTest : public SongTest {
protected:
    // A song file of three verses, the second one given.
    std::wstring WriteSong(const std::string& name, const std::string& second)
    {
        std::filesystem::path file = m_Folder / name;
        WriteBytes(file, "One one\r\n\r\n" + second + "\r\n\r\nThree three\r\n");
        return file.wstring();
    }

    // Verse `index` of the song in that file, saved in a folder stream file and read
    // back into a new stream.
    SmartPtr<IDataStream> SaveVerse(const std::wstring& song, int index, bool edit, const std::string& streamName)
    {
        auto book = Create<IVXBook>(L"VXSong");
        m_Songs.emplace_back(book.get());
        book.As<IFileArchive>()->put_Filename(Str(song));
        EXPECT_EQ(book.As<IFileArchive>()->Load(), S_OK);
        SmartPtr<IUnknown> item;
        book.As<ISuperCollection>()->get_Item(index, item.Receive());
        auto verse = QueryAs<IVXSongVerse>(item.get());
        EXPECT_TRUE(verse);
        if (edit)
            verse->put_Text(REFLiteral(L"Edited by hand"));
        auto stream = Create<IDataStream>(L"FolderStream");
        QueryAs<IDataPersist>(verse.get())->Save(stream, 0);
        return ThroughFile(stream, m_Folder / streamName);
    }

    static SmartPtr<IVXSongVerse> LoadVerse(IDataStream* stream)
    {
        auto verse = Create<IVXSongVerse>(L"VXSongVerse");
        EXPECT_EQ(QueryAs<IDataPersist>(verse.get())->Load(stream, 0), S_OK);
        return verse;
    }

    SmartPtr<IVXBook> Source(IVXSongVerse* verse)
    {
        SmartPtr<IVXBook> book;
        verse->get_Source(book.Receive());
        if (book)
            m_Songs.emplace_back(book.get());
        return book;
    }

    static std::wstring FileOf(IVXBook* book)
    {
        SmartPtr<IString> name;
        if (auto archive = QueryAs<IFileArchive>(book))
            archive->get_Filename(name.Receive());
        return Text(name);
    }

    TempFolder m_Folder;
};

TEST_F(VerseReloadTest, TextComesFromTheSongUnlessEditedOrGone)
{
    // after the save: 0 song kept, 1 rewritten, 2 removed, 3 a folder in its place
    struct Case { const char* what; bool edit; int after; const wchar_t* text; bool hasSource; };
    const Case cases[] = {
        {"unedited, song rewritten", false, 1, L"Two rewritten", true},
        {"edited, song present", true, 0, L"Edited by hand", true},
        {"edited, song rewritten", true, 1, L"Edited by hand", true},
        {"unedited, song gone", false, 2, L"Two two", false},
        {"unedited, folder in its place", false, 3, L"Two two", false},
    };
    int round = 0;
    for (const Case& c : cases) {
        std::string name = "song" + std::to_string(round++) + ".txt";
        std::wstring song = WriteSong(name, "Two two");
        auto saved = SaveVerse(song, 1, c.edit, name + ".zip");
        if (c.after == 1)
            WriteSong(name, "Two rewritten");
        if (c.after >= 2)
            std::filesystem::remove(m_Folder / name);
        if (c.after == 3)
            std::filesystem::create_directory(m_Folder / name);
        auto verse = LoadVerse(saved);
        EXPECT_EQ(Text(verse), c.text) << c.what;
        SmartPtr<IVXBook> source = Source(verse);
        EXPECT_EQ(bool(source), c.hasSource) << c.what;
        if (source) {
            EXPECT_EQ(FileOf(source), song) << c.what;
        }
    }
}

TEST_F(VerseReloadTest, VersesOfOneSongShareTheOpenSong)
{
    std::wstring first = WriteSong("first.txt", "Two two");
    std::wstring other = WriteSong("other.txt", "Two other");
    auto a = SaveVerse(first, 0, false, "a.zip");
    auto b = SaveVerse(first, 2, false, "b.zip");
    auto c = SaveVerse(other, 1, false, "c.zip");

    auto verseA = LoadVerse(a);
    auto verseB = LoadVerse(b);
    EXPECT_EQ(Text(verseA), L"One one");
    EXPECT_EQ(Text(verseB), L"Three three");
    EXPECT_TRUE(SameObject(Source(verseA), Source(verseB)));
    auto verseC = LoadVerse(c);
    EXPECT_EQ(Text(verseC), L"Two other");
    EXPECT_FALSE(SameObject(Source(verseC), Source(verseA)));
    EXPECT_EQ(FileOf(Source(verseC)), other);
}

} // namespace
