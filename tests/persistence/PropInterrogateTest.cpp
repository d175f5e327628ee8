// The property table on a probe with one field of every kind, through the real
// string table, XML stream and folder stream.
#include <cstdlib>

#include "persistence/PropInterrogate.h"
#include "runtime/ObjectInfo.h"
#include "support/Collections.h"
#include "support/Streams.h"
#include "support/Values.h"

namespace {

using namespace vxtest;

enum ProbeID { P_BYTE = 11, P_SHORT = 1, P_INT = 29, P_DECIMAL = 4, P_DOUBLE = 5, P_TEXT = 6, P_NONE = 8,
               P_COLOR = 9, P_CHOICE = 19, P_HIDDEN = 20, P_ITEM = 7, P_PATH = 12 };

class CPropProbe : public CObject<CPropProbe>,
                   public IObjectInfoImpl<CPropProbe>,
                   public IUIPropInterrogateImpl<CPropProbe, IUIPropInterrogateEx, 10> {
public:
    static constexpr wchar_t kObjectName[] = L"PropProbe";
    using Frame = IUIPropInterrogateImpl<CPropProbe, IUIPropInterrogateEx, 10>;
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Frame>>;
    using Frame::m_Capacity;
    using Frame::m_Count;

    int32_t FinalConstruct() override
    {
        Prop(P_BYTE, &m_Byte, PROPTYPE_BYTE | PROPTYPE_SWITCH);
        Prop(P_SHORT, &m_Short, PROPTYPE_SHORT);
        PropertyEntry* wide = Prop(P_INT, &m_Int, 0);
        wide->m_Min = -5;
        wide->m_Max = 500;
        Prop(P_DECIMAL, &m_Decimal, PROPTYPE_DECIMAL);
        Prop(P_DOUBLE, &m_Double, PROPTYPE_DOUBLE);
        Prop(P_TEXT, &m_Text, PROPTYPE_STRING);
        Prop(P_NONE, nullptr, PROPTYPE_NONE);
        Prop(P_COLOR, &m_Color, PROPTYPE_COLOR);
        PropE(P_CHOICE, 30, &m_Choice, 0x40, nullptr, nullptr);
        Prop(P_HIDDEN, &m_Hidden, PROPTYPE_INT | PROPTYPE_NOSAVE);
        Prop(P_ITEM, &m_Item, PROPTYPE_OBJECT);
        Prop(P_PATH, &m_Path, PROPTYPE_STRING | PROPTYPE_PATH);
        return S_OK;
    }

    unsigned char m_Byte = 0;
    int16_t m_Short = 0;
    int32_t m_Int = 0;
    int32_t m_Decimal = 0;
    double m_Double = 0;
    SmartPtr<IString> m_Text;
    int32_t m_Color = 0;
    int32_t m_Choice = 0;
    int32_t m_Hidden = 0;
    SmartPtr<IUnknown> m_Item;
    SmartPtr<IString> m_Path;
};

// The string table of the probe, in a file of the test's own, named by VX_STRINGTABLE.
class PropInterrogateTest : public ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        WriteBytes(m_Folder / "strings.ini", "[PropProbe]\n11=Byte flag\n29=Wide\n19=Choice\n30=Off|On|Auto\n"
                                             "[Spare]\n30=Never|First|Last|All\n");
        UseTable(m_Folder / "strings.ini");
    }
    void TearDown() override { unsetenv("VX_STRINGTABLE"); }
    static void UseTable(const std::filesystem::path& file) { setenv("VX_STRINGTABLE", file.c_str(), 1); }

    struct Made {
        SmartPtr<IUIPropInterrogateEx> face;
        CPropProbe* self;
    };
    static Made Make()
    {
        IID iid = IUIPropInterrogateEx::Iid();
        void* out = nullptr;
        CObject<CPropProbe>::_CreateInstance(nullptr, &iid, &out);
        auto face = SmartPtr<IUIPropInterrogateEx>::Adopt(static_cast<IUIPropInterrogateEx*>(out));
        return {face, static_cast<CPropProbe*>(static_cast<CPropProbe::Frame*>(face.get()))};
    }
    // Labels and values of an enumeration, "label=value" joined by spaces.
    static std::wstring Choices(IUnknown* enumeration)
    {
        auto list = QueryAs<INamedCollection>(enumeration);
        std::vector<std::wstring> names = ItemNames(enumeration);
        std::wstring all;
        for (int i = 0; i < int(names.size()); ++i) {
            SmartPtr<IUnknown> item;
            list->get_Item(i, item.Receive());
            auto value = QueryAs<IVariant>(item.get());
            all += (i ? L" " : L"") + names[i] + L"=" + std::to_wstring(value ? value->get_Integer() : -1);
        }
        return all;
    }
    // Puts one value in every field that the stream forms carry.
    static void Fill(CPropProbe* p)
    {
        p->m_Byte = 200;
        p->m_Short = -300;
        p->m_Int = 123456;
        p->m_Decimal = PropFloatBits(2.5f);
        p->m_Double = 0.75;
        p->m_Text = Str(L"a <b> & c");
        p->m_Color = 0x0000FF;
        p->m_Choice = 2;
        p->m_Hidden = 77;
        p->m_Path = Str(InstallFile());
    }
    // A file below the installation, which the registry of the build puts at samples/.
    static std::wstring InstallFile() { return std::filesystem::path(VX_SOURCE_DIR "/samples/songs/x.sng").wstring(); }
    static void ExpectFilled(CPropProbe* p)
    {
        EXPECT_EQ(p->m_Byte, 200);
        EXPECT_EQ(p->m_Short, -300);
        EXPECT_EQ(p->m_Int, 123456);
        EXPECT_EQ(PropBitsFloat(p->m_Decimal), 2.5f);
        EXPECT_EQ(p->m_Double, 0.75);
        EXPECT_EQ(Text(p->m_Text), L"a <b> & c");
        EXPECT_EQ(p->m_Color, 0x0000FF);
        EXPECT_EQ(p->m_Choice, 2);
        EXPECT_EQ(p->m_Hidden, 0) << "a property marked not to be saved comes back untouched";
        EXPECT_EQ(Text(p->m_Path), InstallFile());
    }

    TempFolder m_Folder;
};

TEST_F(PropInterrogateTest, InquireAndControlByStorage)
{
    auto [face, p] = Make();
    p->m_Byte = 250;
    p->m_Short = -2;
    p->m_Int = -7;
    p->m_Double = 1.5;
    struct Case { int id; int32_t result; int value; };
    const Case cases[] = {
        {P_BYTE, PROPTYPE_BYTE | PROPTYPE_SWITCH, 250},  // zero-extended, and the type word is the result
        {P_SHORT, PROPTYPE_SHORT, -2},                   // sign-extended
        {P_INT, PROPTYPE_INT, -7},                       // registered with storage 0, taken as 3
        {P_DOUBLE, PROPTYPE_DOUBLE, PropFloatBits(1.5f)},
        {P_NONE, PROPTYPE_NONE, PROPTYPE_NONE},          // no storage: nothing stored
        {P_TEXT, E_FAIL, -1},
        {P_ITEM, E_FAIL, -1},
        {99, E_INVALIDARG, -1},
        {PROPERTY_COUNT, S_OK, 12},
    };
    for (const Case& c : cases) {
        int value = -1;
        if (c.id == P_NONE)
            value = PROPTYPE_NONE;
        EXPECT_EQ(face->Inquire(c.id, &value), c.result) << c.id;
        EXPECT_EQ(value, c.value) << c.id;
        if (c.id != PROPERTY_COUNT && c.result != E_INVALIDARG) {
            EXPECT_EQ(face->Inquire(c.id, nullptr), p->FindProperty(c.id)->m_Type) << "a null value gives the type";
        }
    }
    // Control stores without a range test, cut to the storage's width.
    const Case writes[] = {{P_BYTE, S_OK, 0x1FF}, {P_SHORT, S_OK, 0x18000}, {P_INT, S_OK, 9999},
                           {P_DOUBLE, S_OK, PropFloatBits(-0.5f)}, {P_NONE, E_INVALIDARG, 1}, {77, E_INVALIDARG, 1}};
    for (const Case& c : writes)
        EXPECT_EQ(face->Control(c.id, c.value), c.result) << c.id;
    EXPECT_EQ(p->m_Byte, 0xFF);
    EXPECT_EQ(p->m_Short, int16_t(0x8000));
    EXPECT_EQ(p->m_Int, 9999);
    EXPECT_EQ(p->m_Double, -0.5);
}

TEST_F(PropInterrogateTest, RangesAndEnumerations)
{
    auto [face, p] = Make();
    struct Case { int id; int32_t result; int low, high; };
    const Case cases[] = {
        {P_BYTE, S_OK, 0, 1},              // a switch
        {P_SHORT, S_OK, 0, 0},
        {P_INT, S_OK, -5, 500},            // limits the class set
        {P_CHOICE, E_INVALIDARG, 0, 0},    // an enumeration has no range
        {99, E_INVALIDARG, 0, 0},
        {PROPERTY_COUNT, S_OK, 1, 29},     // lowest and highest identifier
    };
    for (const Case& c : cases) {
        int low = -1, high = -1;
        EXPECT_EQ(face->ParameterRange(c.id, &low, &high), c.result) << c.id;
        EXPECT_EQ(low, c.low) << c.id;
        EXPECT_EQ(high, c.high) << c.id;
    }
    SmartPtr<IUnknown> choices;
    ASSERT_EQ(face->ParameterEnumeration(P_CHOICE, choices.Receive()), S_OK);
    EXPECT_EQ(Choices(choices), L"Off=0 On=1 Auto=2");
    EXPECT_EQ(face->ParameterEnumeration(P_INT, choices.Receive()), E_INVALIDARG);
    EXPECT_EQ(p->FindProperty(P_CHOICE)->m_Type, 0x43) << "storage 0 becomes 3";

    // The table by a component's name, values given by the caller.
    int values[] = {10, 20, 30, 40};
    int32_t spare = 0;
    ASSERT_EQ(p->PropE(40, &spare, PROPTYPE_INT, Str(L"Spare"), 0, values), E_FAIL) << "no entry 40";
    ASSERT_EQ(p->PropE(30, &spare, PROPTYPE_INT, Str(L"Spare"), 0, values), S_OK);
    face->ParameterEnumeration(30, choices.Receive());
    EXPECT_EQ(Choices(choices), L"Never=10 First=20 Last=30 All=40");
    // Fewer values than choices: the rest hold their index, nothing is read past the values.
    int two[] = {10, 20};
    ASSERT_EQ(p->PropE(31, 30, &spare, PROPTYPE_INT, Str(L"Spare"), two), S_OK);
    face->ParameterEnumeration(31, choices.Receive());
    EXPECT_EQ(Choices(choices), L"Never=10 First=20 Last=2 All=3");
    int count = 0;
    face->Inquire(PROPERTY_COUNT, &count);
    EXPECT_EQ(count, 14);
}

TEST_F(PropInterrogateTest, MissingOrDamagedTableGivesNoChoicesAndNumericKeys)
{
    const std::pair<const char*, std::string> files[] = {{"absent.ini", ""}, {"damaged.ini", std::string("\x01\x02[PropProbe]\n30=A|B", 18)}};
    for (const auto& [name, bytes] : files) {
        if (!bytes.empty())
            WriteBytes(m_Folder / name, bytes);
        UseTable(m_Folder / name);
        auto [face, p] = Make();
        SmartPtr<IUnknown> choices;
        EXPECT_EQ(face->ParameterEnumeration(P_CHOICE, choices.Receive()), E_INVALIDARG) << name;
        EXPECT_EQ(p->m_Count, 11) << name;
        // Keys fall back to the digits of the id.
        auto stream = Create<IDataStream>(L"XMLStream");
        stream->SetBuffer(nullptr, 0, 0);
        face->UIPropInterrogate_SaveXML(nullptr, stream, 0);
        std::wstring text = Text(stream);
        EXPECT_NE(text.find(L"<_x0031_1>0</_x0031_1>"), std::wstring::npos) << Narrow(text);
    }
}

TEST_F(PropInterrogateTest, StringsAndObjectsByReference)
{
    auto [face, p] = Make();
    EXPECT_EQ(face->ControlEx(P_TEXT, Str(L"kept")), S_OK);
    SmartPtr<IUnknown> out;
    EXPECT_EQ(face->InquireEx(P_TEXT, out.Receive()), PROPTYPE_STRING);
    EXPECT_EQ(Text(out), L"kept");
    // Something that isn't a string empties the field.
    auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    EXPECT_EQ(face->ControlEx(P_TEXT, variant), S_OK);
    EXPECT_FALSE(p->m_Text);
    EXPECT_EQ(face->ControlEx(P_ITEM, variant), S_OK);
    EXPECT_EQ(p->m_Item.get(), static_cast<IUnknown*>(variant.get()));
    EXPECT_EQ(face->ControlEx(P_ITEM, nullptr), S_OK);
    EXPECT_FALSE(p->m_Item);
    // A double goes in and out by variant.
    variant->put_Double(3.25);
    EXPECT_EQ(face->ControlEx(P_DOUBLE, variant), S_OK);
    EXPECT_EQ(face->InquireEx(P_DOUBLE, out.Receive()), PROPTYPE_DOUBLE);
    EXPECT_EQ(QueryAs<IVariant>(out.get())->get_Double(), 3.25);
    EXPECT_EQ(face->ControlEx(P_DOUBLE, Str(L"1")), E_FAIL);
    EXPECT_EQ(face->ControlEx(P_INT, variant), E_FAIL);
    EXPECT_EQ(face->InquireEx(P_INT, out.Receive()), E_FAIL);
    EXPECT_EQ(face->ControlEx(99, variant), E_INVALIDARG);
}

TEST_F(PropInterrogateTest, XMLFormNamesByTableAndReadsBack)
{
    auto [face, p] = Make();
    Fill(p);
    auto stream = Create<IDataStream>(L"XMLStream");
    stream->SetBuffer(nullptr, 0, 0);
    ASSERT_EQ(face->UIPropInterrogate_SaveXML(nullptr, stream, 0), S_OK);
    std::wstring text = Text(stream);
    for (const wchar_t* expected : {L"<Byte_flag>200</Byte_flag>", L"<Wide>123456</Wide>", L"<_x0039_>#FF0000</_x0039_>",
                                    L"<_x0031_>-300</_x0031_>", L"<Choice>2</Choice>"})
        EXPECT_NE(text.find(expected), std::wstring::npos) << Narrow(expected) << " in " << Narrow(text);
    EXPECT_EQ(text.find(L"<_x0032_0>"), std::wstring::npos) << "not saved";
    EXPECT_EQ(text.find(L"samples"), std::wstring::npos) << "a path is kept relative to the installation";

    auto reader = Create<IXMLStream>(L"XMLStream");
    // An unknown element, an unclosed one and a stray "<" are stepped over.
    std::wstring padded = L"<unknown>5</unknown><open>" + text + L"<";
    reader->SetBuffer(padded.data(), int(padded.size() * sizeof(wchar_t)), 0);
    auto [copy, q] = Make();
    ASSERT_EQ(copy->UIPropInterrogate_LoadXML(nullptr, reader, 0), S_OK);
    ExpectFilled(q);
}

TEST_F(PropInterrogateTest, FolderFormByIdentifierThroughAFile)
{
    SmartPtr<IDataStream> stream;
    {
        auto [face, p] = Make();
        Fill(p);
        p->m_Item = Info(L"Anna");
        auto saved = Create<IFolderStream>(L"FolderStream");
        ASSERT_EQ(face->UIPropInterrogate_SaveFolderStream(nullptr, saved, 0), S_OK);
        stream = ThroughFile(saved, m_Folder / "props.zip");
    }
    // Another table now: keys differ, but "ID" still finds each property.
    WriteBytes(m_Folder / "other.ini", "[PropProbe]\n11=Renamed\n30=Off|On\n");
    UseTable(m_Folder / "other.ini");
    auto [face, q] = Make();
    q->m_Item = Info(L"");
    ASSERT_EQ(face->UIPropInterrogate_LoadFolderStream(stream.As<IFolderStream>(), 0), S_OK);
    ExpectFilled(q);
    EXPECT_EQ(Author(q->m_Item), L"Anna");
}

TEST_F(PropInterrogateTest, ClearPropertiesGuardsItsCount)
{
    auto [face, p] = Make();
    int32_t spare = 0;
    while (p->m_Count < 1001)
        p->Prop(1000 + p->m_Count, &spare, PROPTYPE_INT);
    EXPECT_EQ(p->m_Capacity, 1010) << "grows by ten";
    p->ClearProperties();
    EXPECT_EQ(p->m_Count, 1001) << "more than 1000 entries are left alone";
    auto [other, q] = Make();
    q->ClearProperties();
    EXPECT_EQ(q->m_Count, 0);
    EXPECT_EQ(other->Inquire(P_INT, nullptr), E_INVALIDARG);
    q->ClearProperties();
    EXPECT_EQ(q->m_Capacity, 0);
}

} // namespace
