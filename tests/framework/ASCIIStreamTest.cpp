// "ASCIIStream": wide text of one stream as UTF-8 bytes in another.
#include "support/Streams.h"

using namespace vxtest;

namespace {

TEST(ASCIIStream, WideTextBecomesUTF8Bytes)
{
    const struct { std::wstring m_Text; std::string m_Bytes; } cases[] = {
        {L"<a>x</a>\r\n", "<a>x</a>\r\n"},
        {L"caf\u00e9 \u20ac \U0001F600", "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {std::wstring(L"ends\0here", 9), "ends"},
        {L"", ""},
    };
    for (const auto& c : cases) {
        auto transform = Create<IStreamTransform>(L"ASCIIStream");
        auto in = Create<IDataStream>(L"DataStream");
        auto out = Create<IDataStream>(L"DataStream");
        ASSERT_TRUE(transform && in && out);
        std::wstring text = c.m_Text;
        in->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
        out->SetBuffer(nullptr, 0, 0);
        EXPECT_GE(transform->Transform(in, out, 0), 0);
        EXPECT_EQ(Buffer(out), c.m_Bytes) << Narrow(c.m_Text);
    }
    auto transform = Create<IStreamTransform>(L"ASCIIStream");
    EXPECT_EQ(transform->Transform(Str(L"not a stream"), nullptr, 0), E_INVALIDARG);
}

} // namespace
