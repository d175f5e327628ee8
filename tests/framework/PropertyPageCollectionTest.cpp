// "UIPropertyPageCollection": the object a frame edits, the values a page asks the
// frame for, and the references it keeps and gives back.
#include "support/Fixture.h"

using namespace vxtest;

namespace {

class PropertyPageCollectionTest : public ModuleTest {
protected:
    // The texts of the objects that get_Objects hands out.
    static SmartPtr<ISimpleCollection> Objects(IUIPropertyPageCollection* pages)
    {
        SmartPtr<ISimpleCollection> objects;
        EXPECT_EQ(pages->get_Objects(objects.Receive()), S_OK);
        return objects;
    }
    static std::vector<std::wstring> Texts(ISimpleCollection* objects)
    {
        std::vector<std::wstring> texts;
        int count = 0;
        objects->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> item;
            objects->get_Item(i, item.Receive());
            texts.push_back(Text(item));
        }
        return texts;
    }
    // The count of references the object holds now, the probe's own aside.
    static int32_t References(IUnknown* object)
    {
        object->AddRef();
        return object->Release();
    }
};

TEST_F(PropertyPageCollectionTest, PutObjectReplacesWhatIsEdited)
{
    using List = std::vector<std::wstring>;
    auto pages = Create<IUIPropertyPageCollection>(L"UIPropertyPageCollection");
    ASSERT_TRUE(pages);
    auto a = Str(L"first");
    auto b = Str(L"second");
    struct Step {
        IUnknown* object;
        int flags;
        List objects;
    };
    const Step steps[] = {{a, 0x60, {L"first"}}, {b, 0x40, {L"second"}}, {nullptr, 0, {}}, {a, 0x60, {L"first"}}};
    List previous;
    EXPECT_EQ(Texts(Objects(pages)), previous);
    for (const Step& step : steps) {
        SmartPtr<ISimpleCollection> before = Objects(pages);
        EXPECT_EQ(pages->put_Object(step.object, step.flags), S_OK);
        EXPECT_EQ(Texts(Objects(pages)), step.objects);
        int flags = -1;
        QueryAs<IUIPropInterrogate>(pages.get())->Inquire(PAGES_OBJECTFLAGS, &flags);
        EXPECT_EQ(flags, step.flags);
        // A list handed out before is not changed under its holder.
        EXPECT_EQ(Texts(before), previous);
        previous = step.objects;
    }
}

TEST_F(PropertyPageCollectionTest, PageValuesAndFlags)
{
    auto pages = Create<IUIPropertyPageCollection>(L"UIPropertyPageCollection");
    auto interrogate = pages.As<IUIPropInterrogate>();
    int height = 0;
    SmartPtr<IUnknown> object;
    ASSERT_EQ(pages->get_PageValue(PAGES_STRIPHEIGHT, object.Receive(), &height), S_OK);
    EXPECT_EQ(height, 22);
    EXPECT_FALSE(object);
    EXPECT_EQ(interrogate->Control(PAGES_STRIPHEIGHT, 30), S_OK);
    pages->get_PageValue(PAGES_STRIPHEIGHT, nullptr, &height);
    EXPECT_EQ(height, 30);
    EXPECT_EQ(pages->get_PageValue(5, nullptr, &height), E_INVALIDARG);
    EXPECT_EQ(height, 30);

    pages->SetFlags(0x305);
    pages->put_Pages(Str(L"UIParametersPropPage"), 0xE1);
    struct Read {
        int code;
        int value;
    };
    for (const Read r : {Read{PAGES_FLAGS, 0x305}, Read{PAGES_PAGESMODE, 0xE1}, Read{PAGES_STRIPHEIGHT, 30}}) {
        int value = -1;
        EXPECT_EQ(interrogate->Inquire(r.code, &value), S_OK);
        EXPECT_EQ(value, r.value) << r.code;
    }
    EXPECT_EQ(interrogate->Control(PAGES_FLAGS, 1), E_INVALIDARG);
}

TEST_F(PropertyPageCollectionTest, EverythingHeldIsGivenBack)
{
    auto object = Str(L"edited");
    auto names = Str(L"UIParametersPropPage");
    auto sink = Str(L"listener");
    const int32_t before[] = {References(object), References(names), References(sink)};
    {
        auto pages = Create<IUIPropertyPageCollection>(L"UIPropertyPageCollection");
        pages->put_Object(object, 0x60);
        pages->put_Pages(names, 0xE1);
        EXPECT_EQ(pages.As<IEventSource>()->Advise(sink, ADVISE_ADD), S_OK);
        EXPECT_EQ(References(object), before[0] + 1);
        EXPECT_EQ(References(sink), before[2] + 1);
        // A second object takes the first one's place and its reference.
        pages->put_Object(names, 0);
        EXPECT_EQ(References(object), before[0]);
    }
    EXPECT_EQ(References(object), before[0]);
    EXPECT_EQ(References(names), before[1]);
    EXPECT_EQ(References(sink), before[2]);
}

} // namespace
