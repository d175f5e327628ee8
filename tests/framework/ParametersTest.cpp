// "ParametersCreatable": lookups by name, number and object, the case-sensitive sort,
// bound inputs, and copying.
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "support/Collections.h"
#include "support/Values.h"

using namespace vxtest;

namespace {

// An input bound to a value, as a step's input port is.
class CBoundInput : public CObject<CBoundInput>, public IObjectInfoImpl<CBoundInput>, public IInputParameter {
public:
    static constexpr wchar_t kObjectName[] = L"BoundInput";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IInputParameter>>;
    int32_t get_Value(IUnknown** out) override
    {
        *out = m_Value.Copy();
        return m_Value ? S_OK : E_FAIL;
    }
    int32_t get_Name(IString**) override { return E_NOTIMPL; }
    int32_t put_Name(tagREFString) override { return E_NOTIMPL; }
    int32_t get_Target(IUnknown**) override { return E_NOTIMPL; }
    int32_t put_Target(IUnknown*) override { return E_NOTIMPL; }
    int32_t get_Source(IUnknown**) override { return E_NOTIMPL; }
    int32_t put_Source(IUnknown*) override { return E_NOTIMPL; }
    int32_t get_Flags(int*) override { return E_NOTIMPL; }
    int32_t put_Flags(int) override { return E_NOTIMPL; }
    SmartPtr<IUnknown> m_Value;
};

class ParametersTest : public ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        m_Parameters = Create<IParameters>(L"ParametersCreatable");
        ASSERT_TRUE(m_Parameters);
    }

    void Add(const wchar_t* name, const wchar_t* value, int flags = 0)
    {
        m_Parameters.As<IParametersCreatable>()->Add(Str(name), value ? Str(value) : nullptr, nullptr, flags);
    }

    std::wstring NameAt(int index)
    {
        SmartPtr<IString> name;
        m_Parameters->get_ItemName(index, name.Receive());
        return Text(name);
    }

    std::wstring ItemAt(int index)
    {
        SmartPtr<IUnknown> item;
        m_Parameters->get_Item(index, item.Receive());
        return Text(item);
    }

    SmartPtr<IParameters> m_Parameters;
};

TEST_F(ParametersTest, KeysByNameNumberAndObject)
{
    int index = -1;
    EXPECT_EQ(m_Parameters->get_Index(Variant(7), &index), S_OK) << "a number is an index, existing or not";
    EXPECT_EQ(index, 7);

    Add(L"Title", L"first");
    Add(L"\u00c4ra", L"age");
    Add(L"title", L"second");
    const struct { const wchar_t* m_Key; int32_t m_Result; int m_Index; } cases[] = {
        {L"TITLE", S_OK, 0}, {L"title", S_OK, 0},  {L"\u00c4RA", S_OK, 1}, {L"\u00e4ra", E_FAIL, -1},
        {L"Titl", E_FAIL, -1}, {L"", E_FAIL, -1},
    };
    for (const auto& c : cases) {
        index = 99;
        EXPECT_EQ(m_Parameters->get_Index(Str(c.m_Key), &index), c.m_Result) << Narrow(c.m_Key);
        EXPECT_EQ(index, c.m_Index) << Narrow(c.m_Key);
    }

    EXPECT_EQ(m_Parameters->get_Index(Variant(L"\u00c4RA"), &index), S_OK) << "a variant's string is a name";
    EXPECT_EQ(index, 1);
    // Any object that is neither string nor variant is looked up by identity, also
    // when a variant carries it.
    auto held = Create<IParameters>(L"ParametersCreatable");
    m_Parameters.As<IParametersCreatable>()->Add(Str(L"Object"), held, nullptr, 0);
    auto carried = Variant(0);
    carried->put_Object(held);
    for (IUnknown* key : {static_cast<IUnknown*>(held.get()), static_cast<IUnknown*>(carried.get())}) {
        index = -1;
        EXPECT_EQ(m_Parameters->get_Index(key, &index), S_OK);
        EXPECT_EQ(index, 3);
    }
}

TEST_F(ParametersTest, ValuesDescriptorsAndBoundInputs)
{
    Add(L"Empty", nullptr, 6);
    EXPECT_EQ(ItemAt(0), L"") << "a null value is stored as an empty string";
    int flags = 0;
    m_Parameters->get_ItemFlags(0, &flags);
    EXPECT_EQ(flags, 6);

    Add(L"Bound", L"stored");
    SmartPtr<IInputParameter> input;
    IID iid = IInputParameter::Iid();
    ASSERT_EQ(CObject<CBoundInput>::_CreateInstance(nullptr, &iid, input.ReceiveVoid()), S_OK);
    static_cast<CBoundInput*>(input.get())->m_Value = SmartPtr<IUnknown>(Str(L"bound").get());
    m_Parameters->put_ItemDescriptor(1, input);
    EXPECT_EQ(ItemAt(1), L"bound") << "a bound input overrides the stored value";
    SmartPtr<IUnknown> value;
    EXPECT_EQ(m_Parameters->Get(Str(L"bound"), value.Receive(), nullptr, nullptr, 2), 1);
    EXPECT_EQ(Text(value), L"stored") << "Get without bit 0 takes the stored value";
    static_cast<CBoundInput*>(input.get())->m_Value.Clear();
    EXPECT_EQ(m_Parameters->Get(Str(L"bound"), value.Receive(), nullptr, nullptr, 3), 1);
    EXPECT_FALSE(value) << "an input that gives nothing leaves the value empty";
    EXPECT_EQ(ItemAt(1), L"stored");

    SmartPtr<IUnknown> item;
    EXPECT_EQ(m_Parameters->get_Item(2, item.Receive()), E_INVALIDARG);
    EXPECT_EQ(m_Parameters->put_ItemFlags(-1, 0), E_INVALIDARG);
}

TEST_F(ParametersTest, SortCountsCaseAndReversesContents)
{
    const struct { int m_Mode; const wchar_t* m_Order[4]; } cases[] = {
        {0, {L"Beta", L"Zulu", L"alpha", L"beta"}},
        {2, {L"beta", L"alpha", L"Zulu", L"Beta"}},
    };
    for (const auto& c : cases) {
        m_Parameters = Create<IParameters>(L"ParametersCreatable");
        const wchar_t* names[] = {L"beta", L"Zulu", L"alpha", L"Beta"};
        for (int i = 0; i < 4; ++i)
            Add(names[i], (std::wstring(names[i]) + L"!").c_str(), i);
        ASSERT_EQ(m_Parameters->Sort(c.m_Mode), S_OK);
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(NameAt(i), c.m_Order[i]) << c.m_Mode << " " << i;
            EXPECT_EQ(ItemAt(i), NameAt(i) + L"!") << "each item keeps its own value";
            int flags = -1;
            m_Parameters->get_ItemFlags(i, &flags);
            EXPECT_STREQ(names[flags], c.m_Order[i]) << "and its own flags";
        }
    }
}

// Every road a value takes in and out of the collection keeps its kind: a string
// stays a string, a number a number, an object an object.
TEST_F(ParametersTest, ValuesKeepTheirKindOnEveryRoad)
{
    auto object = Create<IUnknown>(L"SimpleCollection");
    ASSERT_TRUE(object);
    // text: ISCreate of the value variant
    struct Case { const wchar_t* name; SmartPtr<IUnknown> value; short isString, isObject; const wchar_t* text; };
    const Case cases[] = {
        {L"String", SmartPtr<IUnknown>(Str(L"Isaac Watts").get()), 1, 0, L"Isaac Watts"},
        {L"Number", Var(7), 0, 0, L"7"},
        {L"Object", object, 0, 1, L"SimpleCollection"},
        {L"Nothing", {}, 1, 0, L""},
    };
    auto creatable = m_Parameters.As<IParametersCreatable>();
    for (const Case& c : cases)
        creatable->Add(Str(c.name), c.value, nullptr, 0);
    auto copy = Create<IParameters>(L"ParametersCreatable");
    ASSERT_EQ(copy->Copy(m_Parameters), S_OK);
    int index = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(Narrow(c.name));
        for (IParameters* parameters : {m_Parameters.get(), copy.get()}) {
            SmartPtr<IVariant> variant;
            ASSERT_GE(parameters->get_ItemVariant(index, variant.Receive()), 0);
            EXPECT_EQ(variant->IsString() != 0, c.isString != 0);
            EXPECT_EQ(variant->IsObject() != 0, c.isObject != 0);
            EXPECT_EQ(Text(SmartPtr<IString>::Adopt(ISCreate(variant.get()))), c.text);

            SmartPtr<IVariant> iterated;
            parameters->Iterate(index, nullptr, iterated.Receive(), nullptr, nullptr);
            EXPECT_EQ(Text(SmartPtr<IString>::Adopt(ISCreate(iterated.get()))), c.text);

            SmartPtr<IUnknown> unwrapped;
            parameters->Get(Str(c.name), unwrapped.Receive(), nullptr, nullptr, 2);
            if (c.isObject) {
                EXPECT_TRUE(SameObject(unwrapped.get(), object.get()));
            } else if (c.isString) {
                EXPECT_EQ(Text(unwrapped), c.text) << "unwrapped, a string is the string itself";
            }
        }
        ++index;
    }
    // put_Item takes a plain string the same way Add does.
    m_Parameters->put_Item(2, Str(L"replaced"));
    SmartPtr<IVariant> variant;
    m_Parameters->get_ItemVariant(2, variant.Receive());
    EXPECT_TRUE(variant->IsString());
    EXPECT_EQ(ItemAt(2), L"replaced");
}

TEST_F(ParametersTest, CopyReplacesKnownNamesAndAddsOthers)
{
    Add(L"Title", L"old");
    Add(L"Title", L"double");
    auto source = Create<IParameters>(L"ParametersCreatable");
    source.As<IParametersCreatable>()->Add(Str(L"TITLE"), Str(L"new"), nullptr, 5);
    source.As<IParametersCreatable>()->Add(Str(L"Author"), Str(L"Watts"), nullptr, 0);
    ASSERT_EQ(m_Parameters->Copy(source), S_OK);
    ASSERT_EQ(Count(m_Parameters), 3);
    EXPECT_EQ(ItemAt(0), L"new");
    EXPECT_EQ(ItemAt(1), L"double") << "the first of two names takes the value";
    EXPECT_EQ(NameAt(2), L"Author");
    int flags = 0;
    m_Parameters->get_ItemFlags(0, &flags);
    EXPECT_EQ(flags, 5);

    ASSERT_EQ(m_Parameters->Copy(m_Parameters), S_OK);
    EXPECT_EQ(Count(m_Parameters), 3) << "a copy into itself adds nothing";
    EXPECT_EQ(ItemAt(2), L"Watts");
}

} // namespace
