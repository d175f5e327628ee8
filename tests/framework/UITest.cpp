// The headless user interface: a tree's rows as they open and close, selections
// and who reports them, verbs found by code, dialogs and message windows.
#include <functional>
#include <string>
#include <vector>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "support/Fixture.h"

using namespace vxtest;

namespace {

// A subscriber that notes every NodeSelect as "action row flags label".
class CSelectProbe : public CObject<CSelectProbe>, public IObjectInfoImpl<CSelectProbe>, public _IUIContainerEvents {
public:
    static constexpr wchar_t kObjectName[] = L"SelectProbe";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<_IUIContainerEvents>>;

    int32_t NodeSelect(IUnknown* source, int action, int row, int flags, IUnknown* node) override
    {
        std::wstring label = L"?";
        if (auto named = QueryAs<INamedCollection>(source)) {
            int index = -1;
            SmartPtr<IString> name;
            if (named->get_Index(node, &index) >= 0 && named->get_ItemName(index, name.Receive()) >= 0)
                label = Text(name);
        }
        m_Heard.push_back(std::to_wstring(action) + L" " + std::to_wstring(row) + L" " + std::to_wstring(flags) +
                          L" " + label);
        return S_OK;
    }

    std::vector<std::wstring> m_Heard;
};

SmartPtr<ISuperCollection> Collection(const std::vector<std::pair<std::wstring, SmartPtr<IUnknown>>>& items)
{
    auto collection = Create<ISuperCollection>(L"SuperCollection");
    for (const auto& [name, item] : items)
        collection->Add(Str(name), item ? item.get() : Str(name).As<IUnknown>().get(), nullptr, 0);
    return collection;
}

class UITest : public ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        auto chapter1 = Collection({{L"1:1", nullptr}, {L"1:2", nullptr}});
        auto chapter2 = Collection({{L"2:1", nullptr}});
        auto genesis = Collection({{L"1", chapter1.As<IUnknown>()}, {L"2", chapter2.As<IUnknown>()}});
        m_Root = Collection({{L"Genesis", genesis.As<IUnknown>()}, {L"Jude", nullptr}});
        m_Tree = Create<IUITree>(L"UITree");
        ASSERT_TRUE(m_Tree);
        m_Tree->put_Root(m_Root);
    }

    // The rows as "label/depth", one after the other.
    std::wstring Rows()
    {
        auto view = m_Tree.As<IUITreeView>();
        int count = 0;
        view->get_RowCount(&count);
        std::wstring out;
        for (int row = 0; row < count; ++row) {
            SmartPtr<IString> label;
            int depth = -1;
            view->get_Row(row, label.Receive(), &depth, nullptr);
            out += (row ? L" " : L"") + Text(label) + L"/" + std::to_wstring(depth);
        }
        return out;
    }

    SmartPtr<ISuperCollection> m_Root;
    SmartPtr<IUITree> m_Tree;
};

TEST_F(UITest, RowsFollowWhatIsOpen)
{
    SmartPtr<IUnknown> genesis;
    m_Root->get_Item(0, genesis.Receive());
    auto tree = m_Tree.get();
    auto expand = [&](IUnknown* node, int index) { return [=] { return tree->Expand(node, index); }; };
    const wchar_t* all = L"Genesis/0 1/1 1:1/2 1:2/2 2/1 2:1/2 Jude/0";
    struct Step { const char* what; std::function<int32_t()> run; int32_t result; const wchar_t* rows; } steps[] = {
        {"start", [] { return S_OK; }, S_OK, L"Genesis/0 Jude/0"},
        {"expand root 0", expand(m_Root, 0), S_OK, L"Genesis/0 1/1 2/1 Jude/0"},
        {"expand genesis 1", expand(genesis, 1), S_OK, L"Genesis/0 1/1 2/1 2:1/2 Jude/0"},
        {"expand row 1", [&] { return m_Tree.As<IUITreeView>()->ExpandRow(1); }, S_OK, all},
        // A leaf has no rows to open, and a position past the end names nothing.
        {"expand root 1", expand(m_Root, 1), E_FAIL, all},
        {"expand root 2", expand(m_Root, 2), E_INVALIDARG, all},
        // The same root again keeps the tree as it is; Reset closes everything.
        {"same root", [&] { return tree->put_Root(m_Root); }, S_OK, all},
        {"reset", [&] { return tree->Reset(); }, S_OK, L"Genesis/0 Jude/0"},
        {"expand root 0", expand(m_Root, 0), S_OK, L"Genesis/0 1/1 2/1 Jude/0"},
        {"new root", [&] { return tree->put_Root(genesis); }, S_OK, L"1/0 2/0"},
        {"detach", [&] { return m_Tree.As<IUINodeContainer>()->Detach(); }, S_OK, L""},
    };
    for (const Step& step : steps) {
        EXPECT_EQ(step.run(), step.result) << step.what;
        EXPECT_EQ(Rows(), step.rows) << step.what;
    }
}

TEST_F(UITest, OnlyModeSevenReportsTheSelection)
{
    SmartPtr<_IUIContainerEvents> probe;
    IID iid = IID__IUIContainerEvents;
    ASSERT_EQ(CObject<CSelectProbe>::_CreateInstance(nullptr, &iid, probe.ReceiveVoid()), S_OK);
    ASSERT_EQ(m_Tree.As<IEventSource>()->Advise(probe, ADVISE_ADD), S_OK);
    m_Tree->Expand(m_Root, 0);
    struct Case { int row, mode; int32_t result; int selected; const wchar_t* heard; } cases[] = {
        {2, 7, S_OK, 2, L"1 2 0 2"},
        {3, 5, S_OK, 3, L""},
        {0, 7, S_OK, 0, L"1 0 0 Genesis"},
        {4, 7, E_INVALIDARG, 0, L""},
        {-1, 5, E_INVALIDARG, 0, L""},
    };
    auto* heard = &static_cast<CSelectProbe*>(probe.get())->m_Heard;
    for (const Case& c : cases) {
        heard->clear();
        EXPECT_EQ(m_Tree->SelectRow(c.row, c.mode), c.result) << c.row;
        SmartPtr<IUnknown> active;
        EXPECT_EQ(m_Tree->GetSelection(0, 2, active.Receive()), c.selected) << c.row;
        EXPECT_TRUE(SameObject(active, m_Root));
        EXPECT_EQ(heard->empty() ? L"" : heard->front(), std::wstring(c.heard)) << c.row;
    }
    m_Tree->Reset();
    EXPECT_EQ(m_Tree->GetSelection(0, 2, nullptr), -1);
}

// Names, codes, states and positions of verbs are read back by the Bible's menu test; here the lookups.
TEST_F(UITest, VerbsAreFoundByCode)
{
    auto verbs = Create<IUIVerbCollection>(L"UIVerbCollection");
    for (int code : {3, 101, 102})
        verbs->Add(-1, Str(std::to_wstring(code)), 0, 0, code, 0);
    const int cases[][2] = {{3, 0}, {101, 1}, {102, 2}, {7, -1}}; // code, index; -1: any negative
    for (const auto& c : cases) {
        int index = verbs->get_Index(c[0]);
        EXPECT_EQ(index < 0 ? -1 : index, c[1]) << c[0];
    }
}

TEST_F(UITest, DialogsAnswerAsTheHostSays)
{
    TempFolder folder;
    auto utils = Create<IUIUtils>(L"UIUtils");
    ASSERT_TRUE(utils);
    auto state = utils.As<IUIPropInterrogate>();
    int shownBefore = 0;
    state->Inquire(UIUTILS_SHOWN, &shownBefore);
    // A cancelled dialog answers S_FALSE and saves nothing; an accepted one S_OK.
    for (auto [answer, result] : {std::pair{UIDIALOG_CANCEL, S_FALSE}, {UIDIALOG_OK, S_OK}}) {
        // The answer holds for every dialog object of the process.
        ASSERT_EQ(state->Control(UIUTILS_ANSWER, answer), S_OK);
        auto other = Create<IUIUtils>(L"UIUtils");
        auto file = folder / ("saved" + std::to_string(answer) + ".ini");
        auto ini = Create<IFileArchive>(L"INIFile");
        ini->put_Filename(Str(file.wstring()));
        ini.As<IINIFile>()->put_Section(Str(L"Bible"));
        ini.As<IParametersCreatable>()->Add(Str(L"1"), Str(L"Genesis"), nullptr, 0);
        EXPECT_EQ(other->ShowFileArchive(ini, 0, 1, 1, 0, -1, 0), result);
        EXPECT_EQ(std::filesystem::exists(file), result == S_OK);
        SmartPtr<IUnknown> frame;
        ASSERT_EQ(other->ShowPropertyFrame(nullptr, ini, 3, nullptr, frame.Receive(), 4, 0), S_OK);
        EXPECT_EQ(frame.As<IUIPropertyFrame>()->Show(1, 2), result);
    }
    int shown = 0;
    state->Inquire(UIUTILS_SHOWN, &shown);
    EXPECT_EQ(shown - shownBefore, 4);
    state->Control(UIUTILS_ANSWER, UIDIALOG_CANCEL);
}

TEST_F(UITest, MessageWindowIsSilentOffATerminal)
{
    testing::internal::CaptureStderr();
    {
        auto window = Create<IMessageWindow>(L"MessageWindow");
        ASSERT_TRUE(window);
        EXPECT_EQ(window->Show(Str(L"Loading KJV")), S_OK);
        EXPECT_EQ(window->Show(nullptr), S_OK);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
