// Song files: the lazy Load, the byte form of Save, plain text files in any encoding,
// the attributes a file brings, and the pages that read it.
#include "songs/SongSupport.h"
#include "support/Collections.h"
#include "support/Streams.h"
#include "support/TextBytes.h"

namespace {

using namespace vxtest;

class SongFile : public SongTest {
protected:
    SmartPtr<IVXSong> LoadSong(const std::filesystem::path& file)
    {
        auto song = NewSong();
        EXPECT_EQ(ArchiveLoad(song, file), S_OK);
        return song;
    }
    TempFolder m_Folder;
};

TEST_F(SongFile, SavedLoadedAndSavedAgainIsByteIdentical)
{
    auto song = NewSong();
    SetText(song, L"<verses><verse id=\"My Chorus\">Sing \x263A\r\nloud</verse><verse>two</verse>"
                  L"<verse id=\"End\">x < y</verse></verses>");
    song.As<IParameters>().As<IParametersCreatable>()->Add(Str(L"author"), Str(L"Anon"), nullptr, 0);
    ASSERT_EQ(ArchiveSave(song, m_Folder / "first.sng"), S_OK);
    std::string first = ReadBytes(m_Folder / "first.sng");
    // The mark, then the file body as 16-bit units, with no terminator.
    EXPECT_EQ(first, Utf16(SongText(song, 7)));
    EXPECT_EQ(first.rfind(Utf16(L"<?xml version=\"1.0\" encoding=\"UNICODE\"?>\r\n"), 0), 0u);

    auto again = LoadSong(m_Folder / "first.sng");
    EXPECT_EQ(VersesOf(again).ids, VersesOf(song).ids);
    EXPECT_EQ(AttributesOf(again), AttributesOf(song));
    ASSERT_EQ(ArchiveSave(again, m_Folder / "second.sng"), S_OK);
    EXPECT_EQ(ReadBytes(m_Folder / "second.sng"), first);
    // Save gave the song the file's name as its title; a reload keeps it.
    EXPECT_EQ(AttributesOf(song), (Attributes{{L"author", L"Anon"}, {L"Title", L"first"}}));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_Folder.Path()), {}), 2) << "no stray files";
}

TEST_F(SongFile, PlainTextInEveryEncoding)
{
    const std::string folder = std::string(VX_SOURCE_DIR) + "/samples/encodings/";
    auto reference = LoadSong(folder + "a-toi-la-gloire.utf8.txt");
    SongVerses verses = VersesOf(reference);
    ASSERT_EQ(verses.texts.size(), 3u);
    EXPECT_EQ(verses.texts[0].substr(0, 30), L"\u00C0 toi la gloire, \u00F4 Ressuscit\u00E9!");
    for (const char* file : {"a-toi-la-gloire.latin1.txt", "a-toi-la-gloire.utf16-mark.txt",
                             "a-toi-la-gloire.utf16-no-mark.txt"}) {
        auto song = LoadSong(folder + file);
        EXPECT_EQ(VersesOf(song).texts, verses.texts) << file;
        EXPECT_EQ(ArchiveFlag(song, ARCHIVE_MODIFIED), 0) << file;
    }
    // Saved under a ".txt" name, the text becomes a song file there.
    ASSERT_EQ(ArchiveSave(reference, m_Folder / "copy.txt"), S_OK);
    EXPECT_EQ(ReadBytes(m_Folder / "copy.txt").substr(0, 2), "\xFF\xFE");
    EXPECT_EQ(VersesOf(LoadSong(m_Folder / "copy.txt")).texts, verses.texts);
}

TEST_F(SongFile, AttributesAFileBrings)
{
    struct Case { const char* what; std::wstring attributes; Attributes expected; } cases[] = {
        {"first of Title and title wins", L"<Title>One</Title><title>Two</title>",
         {{L"Title", L"One"}, {L"Author", L""}}},
        {"an empty tag makes no attribute, yet Author is there", L"<Author> </Author><key>G</key>",
         {{L"key", L"G"}, {L"Title", L""}, {L"Author", L""}}},
        {"values are trimmed", L"<Title>\r\n  Amazing  \r\n</Title>", {{L"Title", L"Amazing"}, {L"Author", L""}}},
        {"a tag's attributes stay in its name", L"<note lang=en>hi</note>",
         {{L"note lang=en", L"hi"}, {L"Title", L""}, {L"Author", L""}}},
    };
    for (const Case& c : cases) {
        WriteBytes(m_Folder / "a.sng",
                   Utf16(L"<song>\r\n<attributes>\r\n" + c.attributes + L"\r\n</attributes>\r\n<verses>\r\n"
                         L"<verse id=\"V\">\r\nx\r\n</verse>\r\n</verses>\r\n"));
        auto song = LoadSong(m_Folder / "a.sng");
        EXPECT_EQ(AttributesOf(song), c.expected) << c.what;
        EXPECT_EQ(VersesOf(song).ids, std::vector<std::wstring>{L"V"}) << c.what;
    }
}

TEST_F(SongFile, LoadIsLazyAndUnloadReadsAgain)
{
    const auto file = m_Folder / "lazy.sng";
    WriteBytes(file, Utf16(L"<attributes><Title>Old</Title></attributes>\r\n<verses><verse>old</verse></verses>"));
    auto song = LoadSong(file);
    auto archive = song.As<IFileArchive>();
    EXPECT_EQ(ArchiveFlag(song, ARCHIVE_HASFILE), 1);
    WriteBytes(file, Utf16(L"<attributes><Title>New</Title><key>D</key></attributes>\r\n"
                           L"<verses><verse>new</verse></verses>"));
    EXPECT_EQ(archive->Load(), S_OK);
    EXPECT_EQ(VersesOf(song).texts, std::vector<std::wstring>{L"old"}) << "read once";
    EXPECT_EQ(archive->Unload(), S_OK);
    EXPECT_EQ(ArchiveFlag(song, ARCHIVE_HASFILE), 0);
    EXPECT_TRUE(VersesOf(song).texts.empty());
    EXPECT_EQ(archive->Load(), S_OK);
    EXPECT_EQ(VersesOf(song).texts, std::vector<std::wstring>{L"new"});
    // Attributes from the first reading keep their values; new names join.
    EXPECT_EQ(AttributesOf(song), (Attributes{{L"Title", L"Old"}, {L"Author", L""}, {L"key", L"D"}}));
}

// The pages of a song ask for its text, so they read the file.
TEST_F(SongFile, FourPagesAndTheSongRead)
{
    WriteBytes(m_Folder / "hymn.txt", "Be thou my vision\n");
    auto song = NewSong();
    song.As<IFileArchive>()->put_Filename(Str((m_Folder / "hymn.txt").wstring()));
    SmartPtr<INamedCollection> pages;
    ASSERT_EQ(song.As<IUIPropertyPageSpecify>()->GetPages(0, pages.Receive(), nullptr), S_OK);
    std::vector<std::wstring> components;
    for (int i = 0; i < 4; ++i) {
        SmartPtr<IUnknown> component;
        pages->get_Item(i, component.Receive());
        components.push_back(Text(component));
    }
    EXPECT_EQ(ItemNames(pages), (std::vector<std::wstring>{L"Song", L"Text", L"Attributes", L""}));
    EXPECT_EQ(components, (std::vector<std::wstring>{L"VXVisualText", L"VXTextPropPage", L"UIParametersPropPage",
                                                     L"UIFileArchivePropPage"}));
    EXPECT_EQ(VersesOf(song).texts, std::vector<std::wstring>{L"Be thou my vision"});
    EXPECT_EQ(ArchiveFlag(song, ARCHIVE_HASFILE), 2);
}

TEST_F(SongFile, ReadAndWriteFailuresAreQuiet)
{
    // A missing file: an empty song with the two attributes, counted as loaded.
    auto missing = LoadSong(m_Folder / "missing.sng");
    EXPECT_TRUE(VersesOf(missing).texts.empty());
    EXPECT_EQ(AttributesOf(missing), (Attributes{{L"Title", L""}, {L"Author", L""}}));
    EXPECT_EQ(ArchiveFlag(missing, ARCHIVE_HASFILE), 1);

    auto song = NewSong();
    SetText(song, L"words");
    EXPECT_EQ(song.As<IFileArchive>()->Save(), E_INVALIDARG) << "no file name";
    EXPECT_EQ(ArchiveFlag(song, ARCHIVE_MODIFIED), 1);
    // A file that can't be created is not reported, and the song counts as saved.
    EXPECT_EQ(ArchiveSave(song, m_Folder / "no" / "such.sng"), S_OK);
    EXPECT_EQ(ArchiveFlag(song, ARCHIVE_MODIFIED), 0);
    EXPECT_FALSE(std::filesystem::exists(m_Folder / "no"));
    // A title of blanks has a length and is kept.
    auto blank = NewSong();
    blank.As<IParameters>().As<IParametersCreatable>()->Add(Str(L"Title"), Str(L"  "), nullptr, 0);
    ASSERT_EQ(ArchiveSave(blank, m_Folder / "blank.sng"), S_OK);
    EXPECT_EQ(AttributesOf(blank), (Attributes{{L"Title", L"  "}}));
}

} // namespace
