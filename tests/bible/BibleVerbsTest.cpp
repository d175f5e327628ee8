// The Bible's own menu: offered where the registry switches it on, with the verbs
// enabled by the Bible's form, and the actions that pack and unpack a translation.
#include "bible/BibleRig.h"
#include "bible/VXBible.h"
#include "support/Collections.h"
#include "support/ScopedRegistry.h"

using namespace vxtest;

namespace {

class BibleVerbsTest : public ModuleTest {
protected:
    SmartPtr<IFileArchive> Open(const std::filesystem::path& path)
    {
        auto bible = Create<IFileArchive>(L"VXBible");
        bible->put_Filename(Str(path.wstring()));
        bible->Load();
        return bible;
    }
    // The verbs as "name:code:on|off", or the failure.
    static std::wstring Verbs(IUnknown* bible)
    {
        SmartPtr<IUIVerbCollection> verbs;
        int32_t result = QueryAs<IUIVerbCollectionSpecify>(bible)->GetVerbs(0, nullptr, verbs.Receive());
        if (result < 0)
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
    // Each book's name, chapters, header and first verse.
    static std::wstring Books(IFileArchive* bible)
    {
        std::wstring out;
        auto books = QueryAs<INamedCollection>(bible);
        int count = 0;
        books->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IString> name, header, verse;
            SmartPtr<IUnknown> item;
            books->get_ItemName(i, name.Receive());
            books->get_Item(i, item.Receive());
            if (auto file = item.As<IFileArchive>())
                file->Load();
            auto book = item.As<IVXBook>();
            int chapters = 0;
            book->get_ChapterCount(&chapters);
            book->Header(header.Receive(), 0, 1, 1, nullptr);
            book->get_Verse(0, 1, 1, verse.Receive());
            out += Text(name) + L"/" + std::to_wstring(chapters) + L"/" + Text(header) + L"/" + Text(verse) + L"|";
        }
        return out;
    }

    TempFolder m_Folder;
};

TEST_F(BibleVerbsTest, TheMenuFollowsTheSwitchAndTheForm)
{
    std::filesystem::path folder = WriteTestBible(m_Folder.Path());
    ASSERT_EQ(QueryAs<IUIVerbCollectionSpecify>(Open(folder).get())->DoAction(BIBLEVERB_COMPRESS, nullptr), S_OK);
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
        SCOPED_TRACE(c.registry ? c.registry : "no registry");
        std::filesystem::path file = m_Folder / ("registry" + std::to_string(n++) + ".ini");
        if (c.registry)
            WriteBytes(file, c.registry);
        ScopedRegistry registry(file);
        auto bible = Open(c.packed ? m_Folder / "Test Bible.tBL" : folder);
        EXPECT_EQ(Verbs(bible), c.verbs);
        EXPECT_EQ(QueryAs<IUIVerbCollectionSpecify>(bible.get())->GetVerbs(0, nullptr, nullptr), E_INVALIDARG);
    }
}

TEST_F(BibleVerbsTest, ActionsPackUnpackAndLeaveTheRestAlone)
{
    std::filesystem::path folder = WriteTestBible(m_Folder.Path());
    auto original = Open(folder);
    auto verbs = original.As<IUIVerbCollectionSpecify>();
    EXPECT_EQ(verbs->DoAction(7, nullptr), 7);
    EXPECT_FALSE(std::filesystem::exists(m_Folder / "Test Bible.tBL"));
    // The property frame needs its page collection; without one there is nothing to show.
    IID iid = IID_IUnknown;
    SmartPtr<IUnknown> pages = SmartPtr<IUnknown>::Adopt(CreateObject(REFLiteral(L"UIPropertyPageCollection"), &iid));
    EXPECT_EQ(verbs->DoAction(BIBLEVERB_EDIT, nullptr), pages ? S_OK : E_FAIL);
    SmartPtr<INamedCollection> named;
    EXPECT_EQ(original.As<IUIPropertyPageSpecify>()->GetPages(0, named.Receive(), nullptr), S_OK);
    EXPECT_EQ(ItemNames(named), std::vector<std::wstring>{L"VXBible"});
    SmartPtr<IUnknown> page;
    named->get_Item(0, page.Receive());
    EXPECT_EQ(Text(page), L"UIPropInterrogatePropPage");

    // Packed beside the folder, unpacked from a copy elsewhere, and read again.
    ASSERT_EQ(verbs->DoAction(BIBLEVERB_COMPRESS, nullptr), S_OK);
    std::filesystem::create_directories(m_Folder / "out");
    std::filesystem::copy_file(m_Folder / "Test Bible.tBL", m_Folder / "out" / "Copy.tBL");
    auto packed = Open(m_Folder / "out" / "Copy.tBL");
    ASSERT_EQ(packed.As<IUIVerbCollectionSpecify>()->DoAction(BIBLEVERB_UNCOMPRESS, nullptr), S_OK);
    auto unpacked = Open(m_Folder / "out" / "Copy");
    EXPECT_EQ(Books(unpacked), Books(original));
    EXPECT_EQ(Books(unpacked), L"Ruth/3/Ruth 1:2 [TB]/2:\tRuth 1.2\r|Jonah/2/Jonah 1:2 [TB]/2:\tJonah 1.2\r|"
                               L"Jude/1/Jude 2 [TB]/2:\tJude 1.2\r|");
    // The packed Bible's books now live in the new files.
    SmartPtr<IUnknown> first;
    packed.As<ISimpleCollection>()->get_Item(0, first.Receive());
    SmartPtr<IString> name;
    first.As<IFileArchive>()->get_Filename(name.Receive());
    EXPECT_EQ(Text(name), (m_Folder / "out" / "Copy" / "Ruth.bbl").wstring());
}

} // namespace
