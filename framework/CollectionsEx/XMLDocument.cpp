#include "framework/CollectionsEx/XMLDocument.h"

#include <cwchar>

#include "persistence/XMLEscape.h"
#include "framework/CollectionsEx/XMLName.h"

CXMLDocument::CXMLDocument(const wchar_t* text, int32_t length)
{
    if (text && length > 0)
        m_Text.assign(text, size_t(length));
    XMLParse(m_Text.data(), int32_t(m_Text.size()), m_Nodes);
    // Names are decoded once, so that a view of one lives as long as the tree.
    for (XMLNode& node : m_Nodes)
        if (!node.m_Instruction)
            XMLDecodeName(m_Text.data() + node.m_NameStart, size_t(node.m_NameLength), node.m_Name);
}

tagREFString CXMLDocument::Slice(int32_t start, int32_t end) const
{
    return tagREFString{end - start, const_cast<wchar_t*>(m_Text.data()) + start};
}

tagREFString CXMLDocument::Name(int32_t node) const
{
    const XMLNode& entry = m_Nodes[size_t(node)];
    if (!entry.m_Name.empty())
        return tagREFString{int32_t(entry.m_Name.size()), const_cast<wchar_t*>(entry.m_Name.data())};
    return Slice(entry.m_NameStart, entry.m_NameStart + entry.m_NameLength);
}

tagREFString CXMLDocument::Text(int32_t node)
{
    XMLNode& entry = m_Nodes[size_t(node)];
    tagREFString raw = Slice(entry.m_InnerStart, entry.m_InnerEnd);
    if (entry.m_FirstChild >= 0 || entry.m_Instruction || !XMLHasMarkup(raw.m_Buffer, size_t(raw.m_Length)))
        return raw;
    if (!entry.m_TextReady) {
        XMLUnescapeText(raw.m_Buffer, size_t(raw.m_Length), entry.m_Text);
        entry.m_TextReady = true;
    }
    return tagREFString{int32_t(entry.m_Text.size()), entry.m_Text.data()};
}

tagREFString CXMLDocument::Attributes(int32_t node) const
{
    const XMLNode& entry = m_Nodes[size_t(node)];
    int32_t start = entry.m_NameStart + entry.m_NameLength;
    int32_t end = entry.m_InnerStart;
    if (entry.m_Instruction || end <= start)
        return Slice(start, start);
    // "<x a>" and "<x a/>": the closing marks belong to the tag, not to its attributes.
    if (m_Text[size_t(end - 1)] == L'>')
        --end;
    if (end > start && m_Text[size_t(end - 1)] == L'/')
        --end;
    return Slice(start, end);
}

bool CXMLDocument::HasName(int32_t node, tagREFString name) const
{
    tagREFString own = Name(node);
    return name.m_Length > 0 && name.m_Buffer && own.m_Length == name.m_Length &&
           std::wmemcmp(own.m_Buffer, name.m_Buffer, size_t(name.m_Length)) == 0;
}

int32_t CXMLDocument::Find(int32_t from, tagREFString name) const
{
    for (int32_t node = from; node >= 0; node = Next(node))
        if (HasName(node, name))
            return node;
    return -1;
}

int32_t CXMLDocument::FindInside(int32_t from, tagREFString name) const
{
    // Depth first without recursion: `pending` holds the next siblings still to visit.
    std::vector<int32_t> pending;
    for (int32_t top = from; top >= 0; top = Next(top)) {
        int32_t node = FirstChild(top);
        while (node >= 0 || !pending.empty()) {
            if (node < 0) {
                node = pending.back();
                pending.pop_back();
                continue;
            }
            if (HasName(node, name))
                return node;
            if (Next(node) >= 0)
                pending.push_back(Next(node));
            node = FirstChild(node);
        }
    }
    return -1;
}
