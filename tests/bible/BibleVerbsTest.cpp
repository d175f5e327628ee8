// The Bible's own menu: offered where the registry switches it on, with the verbs
// enabled by the Bible's form, and the actions that pack and unpack a translation.
#include "bible/BibleRig.h"
#include "bible/BookMaker.h"
#include "bible/VXBible.h"
#include "support/Collections.h"
#include "support/ScopedRegistry.h"

using namespace vxtest;

namespace {

class BibleVerbsTest : public ModuleTest {
protected:
    SmartPtr<IUIVerbCollectionSpecify> Open(const std::filesystem::path& path)
    {
        auto bible = OpenBible(path);
        bible->Load();
        return bible.As<IUIVerbCollectionSpecify>();
    }
    // The verbs as "name:code:on|off", or "fail".
    static std::wstring Verbs(IUIVerbCollectionSpecify* bible)
    {
        SmartPtr<IUIVerbCollection> verbs;
        if (bible->GetVerbs(0, nullptr, verbs.Receive()) < 0)
            return verbs ? L"leaked" : L"fail";
        std::wstring out;
        SmartPtr<IUnknown> verb;
        for (int i = 0; verbs->get_Item(i, verb.Receive()) >= 0; ++i, verb.Clear()) {
            int code = 0, disabled = 0;
            verb.As<IUIPropInterrogate>()->Inquire(UIVERB_CODE, &code);
            verb.As<IUIPropInterrogate>()->Inquire(UIVERB_DISABLED, &disabled);
            out += (i ? L" " : L"") + Text(verb) + L":" + std::to_wstring(code) + (disabled ? L":off" : L":on");
        }
        return out;
    }
    TempFolder m_Folder;
};

TEST_F(BibleVerbsTest, TheMenuFollowsTheSwitchAndTheForm)
{
    std::filesystem::path folder = WriteTestBible(m_Folder.Path());
    ASSERT_EQ(Open(folder)->DoAction(BIBLEVERB_COMPRESS, nullptr), S_OK);
    struct Case {
        const char* registry; // null: no registry file
        bool packed;
        const wchar_t* verbs;
    } cases[] = {
        {"[UI]\r\nSystemMenu=0\r\n", false, L"fail"},
        {"[UI]\r\nOther=1\r\n", false, L"fail"},
        {"[UI]\r\nSystemMenu=\r\n", false, L"fail"},
        {nullptr, false, L"fail"},
        {"[UI]\r\nSystemMenu=1\r\n", false, L"Edit:3:on Compress:101:on UnCompress:102:off"},
        {"[ui]\r\nsystemmenu=-1\r\n", false, L"Edit:3:on Compress:101:on UnCompress:102:off"},
        {"[UI]\r\nSystemMenu=1\r\n", true, L"Edit:3:on Compress:101:off UnCompress:102:on"},
        {"[UI]\r\nSystemMenu=0\r\n", true, L"fail"},
    };
    int n = 0;
    for (const Case& c : cases) {
        std::filesystem::path file = m_Folder / ("registry" + std::to_string(n++) + ".ini");
        if (c.registry)
            WriteBytes(file, c.registry);
        ScopedRegistry registry(file);
        auto bible = Open(c.packed ? m_Folder / "Test Bible.tBL" : folder);
        EXPECT_EQ(Verbs(bible), c.verbs) << (c.registry ? c.registry : "no registry");
        EXPECT_EQ(bible->GetVerbs(0, nullptr, nullptr), E_INVALIDARG);
    }
}

TEST_F(BibleVerbsTest, ActionsPackUnpackAndLeaveTheRestAlone)
{
    auto original = Open(WriteTestBible(m_Folder.Path()));
    EXPECT_EQ(original->DoAction(7, nullptr), 7);
    EXPECT_FALSE(std::filesystem::exists(m_Folder / "Test Bible.tBL"));
    // The property frame is shown with the page collection the framework makes.
    EXPECT_EQ(original->DoAction(BIBLEVERB_EDIT, nullptr), S_OK);
    SmartPtr<INamedCollection> named;
    SmartPtr<IUnknown> page;
    EXPECT_EQ(original.As<IUIPropertyPageSpecify>()->GetPages(0, named.Receive(), nullptr), S_OK);
    named->get_Item(0, page.Receive());
    EXPECT_EQ(ItemNames(named), std::vector<std::wstring>{L"VXBible"});
    EXPECT_EQ(Text(page), L"UIPropInterrogatePropPage");

    // Packed beside the folder, unpacked from a copy elsewhere, and read again.
    ASSERT_EQ(original->DoAction(BIBLEVERB_COMPRESS, nullptr), S_OK);
    std::filesystem::create_directories(m_Folder / "out");
    std::filesystem::copy_file(m_Folder / "Test Bible.tBL", m_Folder / "out" / "Copy.tBL");
    auto packed = Open(m_Folder / "out" / "Copy.tBL");
    ASSERT_EQ(packed->DoAction(BIBLEVERB_UNCOMPRESS, nullptr), S_OK);
    BibleRig unpacked(m_Folder / "out" / "Copy");
    EXPECT_EQ(ItemNames(unpacked.m_Bible), (std::vector<std::wstring>{L"Ruth", L"Jonah", L"Jude"}));
    std::wstring read;
    for (int book = 0; book < 3; ++book) {
        int chapters = 0;
        SmartPtr<IString> header;
        unpacked.Book(book)->get_ChapterCount(&chapters);
        unpacked.Book(book)->Header(header.Receive(), chapters - 1, 1, 1, nullptr);
        read += Text(header) + L" " + Text(unpacked.VerseNode(book, chapters - 1, 1)) + L"|";
    }
    EXPECT_EQ(read, L"Ruth 3:2 [TB] 2:\tRuth 3.2\r|Jonah 2:2 [TB] 2:\tJonah 2.2\r|Jude 2 [TB] 2:\tJude 1.2\r|");
    // The packed Bible's books now live in the new files.
    SmartPtr<IUnknown> first;
    SmartPtr<IString> name;
    packed.As<ISimpleCollection>()->get_Item(0, first.Receive());
    first.As<IFileArchive>()->get_Filename(name.Receive());
    EXPECT_EQ(Text(name), (m_Folder / "out" / "Copy" / "Ruth.bbl").wstring());
}

} // namespace
