// "UIPropertyPageCollection": the object a frame edits, the values a page asks the
// frame for, and the references it keeps and gives back.
#include <tuple>

#include "support/Fixture.h"

using namespace vxtest;

namespace {

int32_t References(IUnknown* object)
{
    object->AddRef();
    return object->Release();
}

class PropertyPageCollectionTest : public ModuleTest {};

TEST_F(PropertyPageCollectionTest, EditedObjectValuesAndReferences)
{
    auto a = Str(L"first");
    auto b = Str(L"second");
    const int32_t heldA = References(a), heldB = References(b);
    {
        auto pages = Create<IUIPropertyPageCollection>(L"UIPropertyPageCollection");
        // The object edited, then the count of objects and the text of the first.
        const std::tuple<IUnknown*, int, std::wstring> steps[] = {
            {a, 1, L"first"}, {b, 1, L"second"}, {nullptr, 0, L""}};
        for (const auto& [object, count, first] : steps) {
            EXPECT_EQ(pages->put_Object(object, 0x60), S_OK);
            SmartPtr<ISimpleCollection> objects;
            ASSERT_EQ(pages->get_Objects(objects.Receive()), S_OK);
            int counted = -1;
            objects->get_Count(&counted);
            SmartPtr<IUnknown> item;
            objects->get_Item(0, item.Receive());
            EXPECT_EQ(counted, count);
            EXPECT_EQ(Text(item), first);
        }
        // What is no longer edited is let go.
        EXPECT_EQ(References(a), heldA);
        pages->put_Object(a, 0x40);
        EXPECT_EQ(References(a), heldA + 1);
        int height = 0;
        SmartPtr<IUnknown> object;
        ASSERT_EQ(pages->get_PageValue(PAGES_STRIPHEIGHT, object.Receive(), &height), S_OK);
        EXPECT_EQ(height, 22);
        EXPECT_FALSE(object);
        pages.As<IUIPropInterrogate>()->Control(PAGES_STRIPHEIGHT, 30);
        EXPECT_EQ(pages->get_PageValue(5, nullptr, &height), E_INVALIDARG);
        pages->get_PageValue(PAGES_STRIPHEIGHT, nullptr, &height);
        EXPECT_EQ(height, 30);
        // A subscriber is held until the collection goes.
        EXPECT_EQ(pages.As<IEventSource>()->Advise(b, ADVISE_ADD), S_OK);
    }
    EXPECT_EQ(References(a), heldA);
    EXPECT_EQ(References(b), heldB);
}

} // namespace
