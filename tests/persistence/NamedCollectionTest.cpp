// The named collection in memory: order, growth, lookups, locks.
#include <functional>

#include "persistence/ProbeCollection.h"
#include "support/Values.h"

using vxtest::Str;
using vxtest::Text;

namespace {

class NamedCollectionTest : public vxtest::ModuleTest {};

std::wstring NameAt(ISuperCollection* collection, int index)
{
    SmartPtr<IString> name;
    collection->get_ItemName(index, name.Receive());
    return Text(name);
}

int CaseSensitiveDescending(const void* a, const void* b)
{
    std::wstring x = Text((*static_cast<CollectionItemRecord* const*>(a))->m_Name);
    return Text((*static_cast<CollectionItemRecord* const*>(b))->m_Name).compare(x);
}

TEST_F(NamedCollectionTest, SortedFlagFollowsWhatKeepsTheOrder)
{
    auto c = MakeProbe();
    AddNamed(c.face, {L"b", L"c"});
    void* own = reinterpret_cast<void*>(&CaseSensitiveDescending);
    const struct { const char* step; std::function<int32_t(ISuperCollection*)> run; int sorted; } steps[] = {
        {"sort by name", [](auto* s) { return s->Sort(0, nullptr); }, 1},
        {"remove", [](auto* s) { return s->Remove(0); }, 1},
        {"reverse keeps it", [](auto* s) { return s->Sort(COLLECTION_SORT_REVERSE, nullptr); }, 1},
        {"clear keeps it", [](auto* s) { return s->Clear(); }, 1},
        {"add", [](auto* s) { return s->Add(Str(L"a"), Str(L"x"), nullptr, 0); }, 0},
        {"reverse of unsorted", [](auto* s) { return s->Sort(COLLECTION_SORT_REVERSE, nullptr); }, 0},
        {"by length", [](auto* s) { return s->Sort(COLLECTION_SORT_BYLENGTH, nullptr); }, 1},
        {"insert", [](auto* s) { return s->Insert(0, Str(L"z"), Str(L"x"), nullptr, 0); }, 0},
        {"own comparison", [own](auto* s) { return s->Sort(0, own); }, 0},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(step.run(c.face), S_OK) << step.step;
        EXPECT_EQ(c.self->m_Sorted, step.sorted) << step.step;
    }
}

TEST_F(NamedCollectionTest, GrowsByWholeStepsAndKeepsTheArrayWhenCleared)
{
    auto c = MakeProbe();
    for (int i = 0; i < 1025; ++i) {
        ASSERT_EQ(c->Add(Str(std::to_wstring(i)), Str(L"x"), nullptr, 0), S_OK);
        ASSERT_EQ(c.self->m_Capacity, i < 1024 ? 1024 : 2048) << i;
    }
    EXPECT_EQ(NameAt(c.face, 1023), L"1023");
    EXPECT_EQ(NameAt(c.face, 1024), L"1024");
    EXPECT_EQ(c->Clear(), S_OK);
    EXPECT_EQ(c.self->m_Count, 0);
    EXPECT_EQ(c.self->m_Capacity, 2048);
}

TEST_F(NamedCollectionTest, InsertPlacesTheItemOrLeavesItLast)
{
    const struct { int index; std::vector<std::wstring> order; } cases[] = {
        {0, {L"n", L"a", L"b", L"c"}}, {1, {L"a", L"n", L"b", L"c"}},   {2, {L"a", L"b", L"n", L"c"}},
        {3, {L"a", L"b", L"c", L"n"}}, {100, {L"a", L"b", L"c", L"n"}}, {-1, {L"a", L"b", L"c", L"n"}},
    };
    for (const auto& test : cases) {
        auto c = MakeProbe();
        AddNamed(c.face, {L"a", L"b", L"c"});
        EXPECT_EQ(c->Insert(test.index, Str(L"n"), Str(L"x"), nullptr, 0), S_OK) << test.index;
        EXPECT_EQ(Names(c.face), test.order) << test.index;
    }
}

TEST_F(NamedCollectionTest, FindsByNameLinearlyAndByHalves)
{
    const std::vector<std::wstring> books = {L"Genesis", L"Exodus",   L"Leviticus", L"Numbers",  L"Deuteronomy",
                                             L"Joshua",  L"Judges",   L"Ruth",      L"1 Samuel", L"2 Samuel",
                                             L"John",    L"Johannes", L"\u00c4rzte"};
    // found: null for a miss.
    const struct { const wchar_t* key; int exact; const wchar_t* found; } cases[] = {
        {L"Gen", 0, L"Genesis"},     {L"gEN", 0, L"Genesis"},          {L"Genesisx", 0, nullptr},
        {L"2 sam", 0, L"2 Samuel"},  {L"Zeph", 0, nullptr},            {L"", 0, nullptr},
        {L"\u00e4rzte", 0, nullptr}, {L"\u00c4RZ", 0, L"\u00c4rzte"}, {L"exodus", 1, L"Exodus"},
        {L"Exo", 1, nullptr},        {L"John", 1, L"John"},
    };
    for (int sorted = 0; sorted < 2; ++sorted) {
        auto c = MakeProbe();
        AddNamed(c.face, books);
        if (sorted)
            c->Sort(0, nullptr);
        for (const auto& test : cases) {
            c.self->m_ExactName = test.exact;
            int index = -7;
            int32_t result = c->get_Index(Str(test.key), &index);
            std::string label = vxtest::Narrow(test.key) + (sorted ? " sorted" : " unsorted");
            if (test.found) {
                EXPECT_EQ(result, S_OK) << label;
                EXPECT_EQ(NameAt(c.face, index), test.found) << label;
            } else {
                EXPECT_EQ(result, E_FAIL) << label;
                // A linear search reports a miss by 65535, and so does a search for nothing.
                if (!sorted || !*test.key) {
                    EXPECT_EQ(index, 65535) << label;
                }
            }
        }
        // Every name is found where it stands, at both ends of the halving too.
        c.self->m_ExactName = 0;
        for (int i = 0; i < int(books.size()); ++i) {
            int index = -1;
            EXPECT_EQ(c->get_Index(Str(NameAt(c.face, i)), &index), S_OK);
            EXPECT_EQ(index, i);
        }
    }
}

TEST_F(NamedCollectionTest, FindsByNumberAndByObject)
{
    // Items that are neither names nor numbers: collections of their own.
    auto c = MakeProbe();
    Probe<IUnknown> items[] = {MakeProbe(), MakeProbe()};
    c->Add(Str(L"a"), items[0].face, nullptr, 0);
    c->Add(Str(L"b"), items[1].face, nullptr, 0);
    auto holder = vxtest::Variant(0);
    holder->put_Object(items[1].face);
    const struct { const char* what; SmartPtr<IUnknown> key; int32_t result; int index; } cases[] = {
        {"null", nullptr, E_FAIL, -1},
        {"number past the end", vxtest::Var(7), S_OK, 7},
        {"floating number", vxtest::Var(-2.9), S_OK, -2},
        {"variant of a name", vxtest::Var(std::wstring(L"b")), S_OK, 1},
        {"variant of an item", SmartPtr<IUnknown>(holder.get()), S_OK, 1},
        {"item through another face", SmartPtr<IUnknown>(items[1].face.As<IObjectInfo>().get()), S_OK, 1},
        {"object not held", SmartPtr<IUnknown>(MakeProbe().face.get()), E_FAIL, -1},
    };
    for (const auto& test : cases) {
        int index = 99;
        EXPECT_EQ(c->get_Index(test.key, &index), test.result) << test.what;
        EXPECT_EQ(index, test.index) << test.what;
    }
}

TEST_F(NamedCollectionTest, QueryCountsHitsOfOneInterface)
{
    auto c = MakeProbe();
    int found = -1;
    EXPECT_EQ(c->Query(IID_IString, -1, 0, &found), E_FAIL);
    auto variant = [] { return SmartPtr<IUnknown>::Adopt(CREFString::CreateVariant()); };
    // Strings at 0, 2, 4; variants at 1, 3; a variant rides along with item 2 only.
    c->Add(nullptr, Str(L"s0"), nullptr, 0);
    c->Add(nullptr, variant(), nullptr, 0);
    c->Add(nullptr, Str(L"s2"), variant(), 0);
    c->Add(nullptr, variant(), nullptr, 0);
    c->Add(nullptr, Str(L"s4"), nullptr, 0);
    const struct { IID iid; int index; short attached; int32_t result; int found; } cases[] = {
        {IID_IString, 1, 0, S_OK, 2},   {IID_IString, 2, 0, S_OK, 4},    {IID_IString, -1, 0, S_OK, 4},
        {IID_IString, 5, 0, E_FAIL, 4}, {IID_IVariant, -1, 0, S_OK, 3},  {IID_IVariant, 0, 1, S_OK, 2},
        {IID_IString, -1, 1, E_FAIL, -9},
    };
    for (const auto& test : cases) {
        found = -9;
        EXPECT_EQ(c->Query(test.iid, test.index, test.attached, &found), test.result) << test.index;
        EXPECT_EQ(found, test.found) << test.index;
    }
}

TEST_F(NamedCollectionTest, SortOrders)
{
    const struct { int flags; bool own; std::vector<std::wstring> order; } cases[] = {
        {0, false, {L"A", L"aa", L"B", L"bb", L"c"}},
        {COLLECTION_SORT_REVERSE, false, {L"c", L"bb", L"B", L"aa", L"A"}},
        {COLLECTION_SORT_BYLENGTH, false, {L"A", L"B", L"c", L"aa", L"bb"}},
        {COLLECTION_SORT_BYLENGTH | COLLECTION_SORT_REVERSE, false, {L"bb", L"aa", L"c", L"B", L"A"}},
        {0, true, {L"c", L"bb", L"aa", L"B", L"A"}},
        {COLLECTION_SORT_REVERSE, true, {L"A", L"B", L"aa", L"bb", L"c"}},
    };
    for (const auto& test : cases) {
        auto c = MakeProbe();
        AddNamed(c.face, {L"bb", L"A", L"c", L"aa", L"B"});
        EXPECT_EQ(c->Sort(test.flags, test.own ? reinterpret_cast<void*>(&CaseSensitiveDescending) : nullptr), S_OK);
        EXPECT_EQ(Names(c.face), test.order) << test.flags << (test.own ? " own" : "");
    }
}

TEST_F(NamedCollectionTest, HoldsOnlyItemsOfItsInterface)
{
    auto variants = MakeProbe<IVariant>();
    EXPECT_EQ(variants->Add(nullptr, Str(L"not a variant"), nullptr, 0), E_INVALIDARG);
    EXPECT_EQ(variants.self->m_Count, 0);
    variants->Add(nullptr, SmartPtr<IUnknown>::Adopt(CREFString::CreateVariant()), nullptr, 0);
    EXPECT_EQ(variants->put_Item(0, Str(L"not a variant")), E_INVALIDARG);
    SmartPtr<IUnknown> kept;
    EXPECT_EQ(variants->get_Item(0, kept.Receive()), S_OK);
    EXPECT_TRUE(kept.As<IVariant>());
}

TEST_F(NamedCollectionTest, OnlyOneLockPairIsLive)
{
    auto c = MakeProbe();
    AddNamed(c.face, {L"a"});
    EXPECT_EQ(c->IsCollectionLocked(), 1);
    c->CollectionLock();
    EXPECT_EQ(c->IsCollectionLocked(), 0);
    c->CollectionUnlock();
    EXPECT_EQ(c->IsCollectionLocked(), 1);
    c->Sort(0, nullptr);
    SmartPtr<IUnknown> out;
    c->get_Item(0, out.Receive());
    // The walk lock and Sort take the owner's lock; single operations don't.
    EXPECT_EQ(c.self->m_Locks, 2);
    EXPECT_EQ(c.self->m_Unlocks, 2);
    c.self->m_ThreadSafe = 1;
    c->CollectionLock();
    c->get_Item(0, out.Receive());
    EXPECT_EQ(c.self->m_Locks, 3);
    EXPECT_EQ(c.self->m_Unlocks, 3);
}

} // namespace
