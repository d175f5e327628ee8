// A verse saved in a show's folder stream fetches its text from its song's file
// again when loaded, unless its text was edited by hand.
#include "songs/SongSupport.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;

class VerseReloadTest : public SongTest {
protected:
    // A song file of three verses, the second one given; its full name.
    std::wstring WriteSong(const std::string& name, const std::string& second)
    {
        WriteBytes(m_Folder / name, "One one\r\n\r\n" + second + "\r\n\r\nThree three\r\n");
        return (m_Folder / name).wstring();
    }

    // Verse `index` of the song in that file, saved in a folder stream file and read back into a new stream.
    SmartPtr<IDataStream> SaveVerse(const std::wstring& song, int index, bool edit, const std::string& streamName)
    {
        auto book = NewSong();
        EXPECT_EQ(ArchiveLoad(book, song), S_OK);
        auto verse = VerseAt(book, index);
        if (edit)
            verse->put_Text(REFLiteral(L"Edited by hand"));
        auto stream = Create<IDataStream>(L"FolderStream");
        QueryAs<IDataPersist>(verse.get())->Save(stream, 0);
        return ThroughFile(stream, m_Folder / streamName);
    }

    // A new verse loaded from the stream, and the song it found.
    std::pair<SmartPtr<IVXSongVerse>, SmartPtr<IVXBook>> LoadVerse(IDataStream* stream)
    {
        auto verse = Create<IVXSongVerse>(L"VXSongVerse");
        EXPECT_EQ(QueryAs<IDataPersist>(verse.get())->Load(stream, 0), S_OK);
        SmartPtr<IVXBook> book;
        verse->get_Source(book.Receive());
        if (book)
            m_Songs.emplace_back(book.get());
        return {verse, book};
    }

    // "text|file of its song", the file empty without a song.
    std::wstring Loaded(IDataStream* stream)
    {
        auto [verse, book] = LoadVerse(stream);
        SmartPtr<IString> name;
        if (book)
            QueryAs<IFileArchive>(book.get())->get_Filename(name.Receive());
        return Text(verse) + L"|" + Text(name);
    }

    TempFolder m_Folder;
};

TEST_F(VerseReloadTest, TextComesFromTheSongUnlessEditedOrGone)
{
    // after the save: 0 song kept, 1 rewritten, 2 removed, 3 a folder in its place
    const struct { const char* what; bool edit; int after; const wchar_t* text; bool hasSource; } cases[] = {
        {"unedited, song rewritten", false, 1, L"Two rewritten", true},
        {"edited, song present", true, 0, L"Edited by hand", true},
        {"edited, song rewritten", true, 1, L"Edited by hand", true},
        {"unedited, song gone", false, 2, L"Two two", false},
        {"unedited, folder in its place", false, 3, L"Two two", false},
    };
    int round = 0;
    for (const auto& c : cases) {
        std::string name = "song" + std::to_string(round++) + ".txt";
        std::wstring song = WriteSong(name, "Two two");
        auto saved = SaveVerse(song, 1, c.edit, name + ".zip");
        if (c.after == 1)
            WriteSong(name, "Two rewritten");
        if (c.after >= 2)
            std::filesystem::remove(m_Folder / name);
        if (c.after == 3)
            std::filesystem::create_directory(m_Folder / name);
        EXPECT_EQ(Loaded(saved), c.text + (L"|" + (c.hasSource ? song : L""))) << c.what;
    }
}

TEST_F(VerseReloadTest, VersesOfOneSongShareTheOpenSong)
{
    std::wstring first = WriteSong("first.txt", "Two two");
    std::wstring other = WriteSong("other.txt", "Two other");
    auto savedA = SaveVerse(first, 0, false, "a.zip"), savedB = SaveVerse(first, 2, false, "b.zip"),
         savedC = SaveVerse(other, 1, false, "c.zip");
    auto a = LoadVerse(savedA), b = LoadVerse(savedB), c = LoadVerse(savedC);
    EXPECT_EQ(Text(a.first) + Text(b.first) + Text(c.first), L"One oneThree threeTwo other");
    EXPECT_TRUE(SameObject(a.second, b.second));
    EXPECT_FALSE(SameObject(c.second, a.second));
}

} // namespace
