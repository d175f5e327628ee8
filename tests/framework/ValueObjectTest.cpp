// The framework's value objects: the variant's kinds, and a component record bound
// to an object. The plain list keeps its items as the string collection does; its
// bounds are checked there.
#include <functional>
#include <string>

#include "support/Fixture.h"

namespace {

using vxtest::Create;
using vxtest::Str;
using vxtest::Text;

class ValueObjectTest : public vxtest::ModuleTest {};

TEST_F(ValueObjectTest, AVariantKnowsWhatItHoldsAndReadsAsText)
{
    auto object = Create<IUnknown>(L"SimpleCollection");
    auto number = Create<IVariant>(L"Variant");
    auto text = Create<IVariant>(L"Variant");
    auto holder = Create<IVariant>(L"Variant");
    ASSERT_TRUE(object && number && text && holder);
    number->put_Integer(5);
    text->put_String(Str(L"Grace"));
    holder->put_Object(object);
    struct Case {
        const char* what;
        std::function<void(IVariant*)> put;
        short type, isString, isObject;
        int integer;
        double real;
        const wchar_t* text; // what ISCreate makes of the variant
    };
    const Case cases[] = {
        {"nothing", [](IVariant*) {}, 0, 0, 0, 0, 0.0, L""},
        {"integer", [](IVariant* v) { v->put_Integer(-7); }, 1, 0, 0, -7, -7.0, L"-7"},
        {"double", [](IVariant* v) { v->put_Double(2.75); }, 2, 0, 0, 2, 2.75, L"2.75"},
        {"number string", [](IVariant* v) { v->put_String(Str(L"42.5")); }, 0, 1, 0, 42, 42.5, L"42.5"},
        {"object", [&](IVariant* v) { v->put_Object(object); }, 0, 0, 1, 0, 0.0, L"SimpleCollection"},
        {"null object", [](IVariant* v) { v->put_Object(nullptr); }, 0, 1, 0, 0, 0.0, L""},
        {"string as object", [](IVariant* v) { v->put_Object(Str(L"Amazing Grace")); }, 0, 1, 0, 0, 0.0,
         L"Amazing Grace"},
        {"number string as object", [](IVariant* v) { v->put_Object(Str(L"12")); }, 0, 1, 0, 12, 12.0, L"12"},
        {"variant of a number", [&](IVariant* v) { v->put_Object(number); }, 1, 0, 0, 5, 5.0, L"5"},
        {"variant of a string", [&](IVariant* v) { v->put_Object(text); }, 0, 1, 0, 0, 0.0, L"Grace"},
        {"variant of an object", [&](IVariant* v) { v->put_Object(holder); }, 0, 0, 1, 0, 0.0,
         L"SimpleCollection"},
        {"object then integer", [&](IVariant* v) { v->put_Object(object); v->put_Integer(3); }, 1, 0, 0, 3, 3.0,
         L"3"},
        // The variant keeps its own copy of a string that changes after.
        {"string changed after", [](IVariant* v) {
             auto s = Create<ICreatableString>(L"CreatableString");
             s->Clone(CREFString(L"7"));
             v->put_String(s);
             s->Clone(CREFString(L"8"));
         }, 0, 1, 0, 7, 7.0, L"7"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        auto variant = Create<IVariant>(L"Variant");
        ASSERT_TRUE(variant);
        c.put(variant);
        EXPECT_EQ(variant->get_Type(), c.type);
        EXPECT_EQ(variant->IsString() != 0, c.isString != 0);
        EXPECT_EQ(variant->IsObject() != 0, c.isObject != 0);
        EXPECT_EQ(variant->get_Integer(), c.integer);
        EXPECT_DOUBLE_EQ(variant->get_Double(), c.real);
        SmartPtr<IString> held;
        EXPECT_EQ(variant->get_String(held.Receive()) >= 0, c.isString != 0);
        if (c.isString) {
            EXPECT_EQ(Text(held), c.text);
        }
        EXPECT_EQ(Text(SmartPtr<IString>::Adopt(ISCreate(variant.get()))), c.text);
    }
}

TEST_F(ValueObjectTest, ABoundRecordNamesItsObjectsComponentAndMakesMore)
{
    auto record = Create<IComponentString>(L"ComponentString");
    ASSERT_TRUE(record);
    EXPECT_GE(record->put_Object(Create<IUnknown>(L"StringCollection")), 0);
    SmartPtr<IString> name, module;
    record->get_Field(COMPONENT_FIELD_NAME, name.Receive());
    record->get_Field(COMPONENT_FIELD_MODULE, module.Receive());
    EXPECT_EQ(Text(name), L"StringCollection");
    EXPECT_EQ(Text(module), L"Collections");
    SmartPtr<IObjectInfo> made;
    ASSERT_GE(record->CreateObject(IObjectInfo::Iid(), made.ReceiveVoid()), 0);
    tagREFString madeName{0, nullptr};
    made->GetName(0, &madeName);
    EXPECT_EQ(std::wstring(madeName.m_Buffer, size_t(madeName.m_Length)), L"StringCollection");
}

} // namespace
