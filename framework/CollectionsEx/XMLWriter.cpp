#include "framework/CollectionsEx/XMLWriter.h"

#include "persistence/XMLEscape.h"
#include "framework/CollectionsEx/XMLName.h"

namespace {

constexpr wchar_t kLineEnd[] = L"\r\n";

} // namespace

void CXMLWriter::Clear()
{
    m_Text.clear();
    m_Open.clear();
}

void CXMLWriter::AppendRaw(const wchar_t* text, size_t length)
{
    if (text && length)
        m_Text.append(text, length);
}

bool CXMLWriter::Open(tagREFString name)
{
    if (name.m_Length < 1 || !name.m_Buffer)
        return false;
    std::wstring written = StartTag(name);
    m_Open.push_back(OpenElement{std::move(written), false});
    return true;
}

bool CXMLWriter::Put(tagREFString name, tagREFString value)
{
    if (name.m_Length < 1 || !name.m_Buffer)
        return false;
    std::wstring written = StartTag(name);
    XMLEscapeText(value, m_Text);
    m_Text += L"</";
    m_Text += written;
    m_Text += L'>';
    m_Text += kLineEnd;
    return true;
}

bool CXMLWriter::Close()
{
    if (m_Open.empty())
        return false;
    OpenElement element = std::move(m_Open.back());
    m_Open.pop_back();
    // Without children the end tag follows the start tag at once: the text stays empty.
    if (element.m_HasChildren)
        Indent(m_Open.size());
    m_Text += L"</";
    m_Text += element.m_Name;
    m_Text += L'>';
    m_Text += kLineEnd;
    return true;
}

std::wstring CXMLWriter::StartTag(tagREFString name)
{
    BeginChild();
    std::wstring written;
    XMLEncodeName(name, written);
    Indent(m_Open.size());
    m_Text += L'<';
    m_Text += written;
    m_Text += L'>';
    return written;
}

void CXMLWriter::BeginChild()
{
    if (m_Open.empty() || m_Open.back().m_HasChildren)
        return;
    m_Open.back().m_HasChildren = true;
    m_Text += kLineEnd;
}

void CXMLWriter::Indent(size_t depth) { m_Text.append(depth * 2, L' '); }
