// The XML stream as the module drives it: values written and read back, the
// forgiving reader on hand-made and HTML text, and objects made by element name.
#include <string>
#include <utility>
#include <vector>

#include "support/Streams.h"
#include "support/Values.h"

namespace {

using namespace vxtest;

std::wstring View(tagREFString view)
{
    return view.m_Length > 0 && view.m_Buffer ? std::wstring(view.m_Buffer, size_t(view.m_Length)) : std::wstring();
}

SmartPtr<IXMLStream> Reader(const std::wstring& text)
{
    auto stream = Create<IXMLStream>(L"XMLStream");
    EXPECT_EQ(stream->SetBuffer(const_cast<wchar_t*>(text.data()), int(text.size() * 4), 0), S_OK);
    return stream;
}

SmartPtr<IXMLStream> Writer()
{
    auto stream = Create<IXMLStream>(L"XMLStreamEx");
    EXPECT_EQ(stream->SetBuffer(nullptr, 0, 0), S_OK);
    return stream;
}

// Fetches a child by name: its text, and the element as a stream.
std::wstring Fetch(IXMLStream* stream, const std::wstring& name, SmartPtr<IXMLStream>* element = nullptr)
{
    tagREFString value{0, nullptr};
    SmartPtr<IUnknown> found;
    EXPECT_EQ(stream->GetAttribute(CREFString(name.data(), int32_t(name.size())), &value, found.Receive(), 1), S_OK)
        << Narrow(name);
    EXPECT_EQ(View(value), Text(found)) << "the view and the value object agree";
    if (element)
        *element = found.As<IXMLStream>();
    return View(value);
}

// The names of a stream's children, in order, each taken as the module takes them.
std::vector<std::wstring> Walk(IXMLStream* stream)
{
    std::vector<std::wstring> names;
    tagREFString name{0, nullptr};
    while (names.size() < 100 && stream->NextAttribute(&name) >= 0) {
        names.push_back(View(name));
        Fetch(stream, names.back());
    }
    return names;
}

// What an XML file can hold as it stands.
bool Carriable(wchar_t c)
{
    if (c == L'\t' || c == L'\r' || c == L'\n')
        return true;
    return c >= 0x20 && !(c >= 0x7F && c <= 0x9F) && !(c >= 0xD800 && c <= 0xDFFF) && c != 0xFFFE && c != 0xFFFF &&
           c <= 0x10FFFF;
}

class XMLStreamTest : public ModuleTest {};

TEST_F(XMLStreamTest, AwkwardValuesComeBackAsTheyWere)
{
    const std::wstring values[] = {
        L"",
        L"plain",
        L"  padded both ends  ",
        L"a & b < c > d \"quoted\" 'single'",
        L"<br><p>tags as text</p>]]>",
        L"line one\r\nline two\ttabbed\n",
        std::wstring(L"nul\0inside", 10),
        L"\x01\x08\x0B\x1F\x7F\x85",
        L"\U0001F600 \u00FC\u4E2D",
        std::wstring(1, wchar_t(0xD800)) + wchar_t(0xFFFE) + wchar_t(0x7FFFFFFF) + wchar_t(-1),
    };
    for (const std::wstring& value : values) {
        auto writer = Writer();
        writer->OpenElement(Str(L"Root"), 0, 0);
        writer->PutAttribute(Str(L"V"), 0, Str(value), 0);
        writer->CloseElement();
        std::wstring text = WideBuffer(writer);
        for (wchar_t c : text)
            ASSERT_TRUE(Carriable(c)) << "a character no XML file can carry is written raw: " << int(c);

        auto reader = Reader(text);
        SmartPtr<IXMLStream> root;
        Fetch(reader, L"Root", &root);
        EXPECT_EQ(Fetch(root, L"V"), value) << Narrow(value);
    }
}

TEST_F(XMLStreamTest, NamesThatXMLCannotHoldComeBackAsTheyWere)
{
    const std::wstring names[] = {L"1", L"Verse 1", L"1:1", L"_x0031_", L"Über-Text.2", L"a<b>&\"", L"_x", L"\U0001F600"};
    auto writer = Writer();
    for (const std::wstring& name : names)
        EXPECT_EQ(writer->PutAttribute(Str(name), 0, Str(L"v"), 0), S_OK);
    EXPECT_LT(writer->PutAttribute(Str(L""), 0, Str(L"v"), 0), 0) << "an element needs a name";
    EXPECT_EQ(Walk(Reader(WideBuffer(writer))), std::vector<std::wstring>(std::begin(names), std::end(names)));
}

TEST_F(XMLStreamTest, ReferencesAndSectionsAreUndoneOnReading)
{
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"&amp;&lt;&gt;&quot;&apos;", L"&<>\"'"},
        {L"&#65;&#x42;&#X43;&#0;", std::wstring(L"ABC\0", 4)},
        {L"&unknown; & &#xZZ; &#99999999999; &#;&", L"&unknown; & &#xZZ; &#99999999999; &#;&"},
        {L"<![CDATA[<b>&amp;</b>]]> &amp;", L"<b>&amp;</b> &"},
        {L"a<!-- gone -->b", L"ab"},
        {L"a < b", L"a < b"},
    };
    for (const auto& [raw, expected] : cases)
        EXPECT_EQ(Fetch(Reader(L"<V>" + raw + L"</V>"), L"V"), expected) << Narrow(raw);
}

TEST_F(XMLStreamTest, EntriesKeepTheirOrderWithInstructionsAtTheTop)
{
    auto reader = Reader(L"\uFEFF<?xml version=\"1.0\"?>\r\n<?xml-stylesheet href=\"g.xsl\"?>\r\n<!DOCTYPE r [<!ENTITY x \"y\">]>"
                         L"<!-- note --><Root><B/><A>1</A><B>2</B><?pi data?></Root>");
    EXPECT_EQ(Walk(reader), (std::vector<std::wstring>{L"?xml", L"?xml-stylesheet", L"Root"}));
    EXPECT_LT(reader->GetAttribute(REFLiteral(L"Root"), nullptr, nullptr, 0), 0) << "passed already";

    reader->ResetAttributes(0, 0, 0);
    EXPECT_EQ(Fetch(reader, L"?xml"), L"version=\"1.0\"");
    SmartPtr<IXMLStream> root;
    Fetch(reader, L"Root", &root);
    tagREFString name{0, nullptr};
    EXPECT_LT(reader->NextAttribute(&name), 0) << "a fetch passes over what it takes";
    EXPECT_EQ(Walk(root), (std::vector<std::wstring>{L"B", L"A", L"B", L"?pi"}));
    root->ResetAttributes(0, 0, 0);
    Fetch(root, L"A");
    EXPECT_EQ(Fetch(root, L"B"), L"2") << "a name is looked for from the position on";
}

// An element with children reads as its raw markup; an unclosed tag is empty, and the reader goes on.
TEST_F(XMLStreamTest, HTMLReadsAsRawMarkupAndUnclosedTagsAsEmpty)
{
    auto html = Reader(L"<html><body><p>one<br>two</p> &amp; x</body></html>");
    EXPECT_EQ(Fetch(html, L"body"), L"<p>one<br>two</p> &amp; x") << "found below the top, unescaped";
    EXPECT_LT(html->GetAttribute(REFLiteral(L"BODY"), nullptr, nullptr, 1), 0) << "names keep their case";

    const std::pair<std::wstring, std::vector<std::wstring>> cases[] = {
        {L"<body><p>a<br>b<p>c<img src=\"x>y\"></body><div>after</div>", {L"body", L"div"}},
        {L"<Root><A>1</A><B>2", {L"Root", L"A", L"B"}},
        {L"<a>x</b>y</a></c><d", {L"a", L"d"}},
        {L"<p <b>bold</b>", {L"p", L"b"}},
        {L"<?xml no end", {L"?xml"}},
    };
    for (const auto& [text, top] : cases)
        EXPECT_EQ(Walk(Reader(text)), top) << Narrow(text);

    auto reader = Reader(cases[0].first);
    SmartPtr<IXMLStream> body;
    Fetch(reader, L"body", &body);
    EXPECT_EQ(Walk(body), (std::vector<std::wstring>{L"p", L"br", L"p", L"img"}));
    body->ResetAttributes(0, 0, 0);
    EXPECT_EQ(Fetch(body, L"p"), L"");
    EXPECT_EQ(Fetch(reader, L"div"), L"after");
    EXPECT_EQ(Fetch(Reader(L"<a>x</b>y</a>"), L"a"), L"x</b>y");
}

TEST_F(XMLStreamTest, AMissingNameIsNegativeAndLeavesTheOutputs)
{
    auto reader = Reader(L"<R><A>1</A></R>");
    IUnknown* element = nullptr;
    tagREFString value{7, nullptr};
    EXPECT_LT(reader->GetAttribute(REFLiteral(L"Nope"), &value, &element, 1), 0);
    EXPECT_EQ(element, nullptr);
    EXPECT_EQ(value.m_Length, 7);
    EXPECT_LT(reader->GetAttribute(REFLiteral(L""), &value, &element, 1), 0);
    tagREFString name{0, nullptr};
    EXPECT_LT(Writer()->NextAttribute(&name), 0) << "a stream being written has nothing to read";
    EXPECT_LT(Reader(L"just text")->NextAttribute(&name), 0);
    EXPECT_LT(Writer()->CloseElement(), 0) << "nothing open";
}

TEST_F(XMLStreamTest, ObjectsOfUnknownClassesAreRefusedAndPassedOver)
{
    auto reader = Reader(L"<Nothing><A>1</A></Nothing><CreatableString/><FileInfo><Author>x</Author></FileInfo>");
    SmartPtr<IUnknown> object;
    EXPECT_LT(reader->ReadObject(object.Receive()), 0) << "no such component";
    EXPECT_LT(reader->ReadObject(object.Receive()), 0) << "a component that can't load itself";
    EXPECT_FALSE(object);
    EXPECT_EQ(reader->ReadObject(object.Receive()), S_OK);
    EXPECT_EQ(Author(object), L"x");
    EXPECT_LT(reader->ReadObject(object.Receive()), 0) << "at the end";
    EXPECT_LT(reader->ReadObjectOfClass(REFLiteral(L"NoSuchComponent"), object.Receive()), 0);
}

TEST_F(XMLStreamTest, ADataStreamKeepsBytesAndSkipsWithinThem)
{
    auto stream = Create<IDataStream>(L"DataStream");
    ASSERT_TRUE(stream);
    stream->SetBuffer(const_cast<char*>("abc"), 3, 0);
    stream->Write("de\0f", 4, 0);
    struct Step { int m_Skip; int32_t m_Result; std::string m_Rest; };
    const Step steps[] = {{0, S_OK, std::string("abcde\0f", 7)}, {2, S_OK, std::string("cde\0f", 5)},
                          {-1, S_OK, std::string("bcde\0f", 6)},   {100, S_FALSE, ""},
                          {-100, S_FALSE, std::string("abcde\0f", 7)}};
    for (const Step& step : steps) {
        EXPECT_EQ(stream->Skip(step.m_Skip, 0, 0), step.m_Result);
        EXPECT_EQ(Buffer(stream), step.m_Rest) << step.m_Skip;
    }
    stream->SetBuffer(nullptr, 0, 0);
    EXPECT_EQ(WideBuffer(stream), L"");
    EXPECT_LT(stream->SetBuffer(nullptr, 5, 0), 0);
}

} // namespace
