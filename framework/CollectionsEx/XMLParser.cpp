#include "framework/CollectionsEx/XMLParser.h"

#include <cwchar>
#include <string_view>
#include <unordered_map>

#include "framework/CollectionsEx/XMLName.h"

namespace {

bool IsSpace(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n'; }

// Loose on purpose: HTML and hand-written files have names that XML would refuse.
bool StartsElement(wchar_t c) { return c == L':' || uint32_t(c) >= 0x80 || XMLIsNameStart(c); }

bool EndsName(wchar_t c) { return IsSpace(c) || c == L'/' || c == L'>' || c == L'<' || c == L'?'; }

class CParser {
public:
    CParser(const wchar_t* text, int32_t length, std::vector<XMLNode>& nodes)
        : m_Text(text), m_Length(length), m_Nodes(nodes)
    {
    }

    void Run();

private:
    wchar_t At(int32_t index) const { return index >= 0 && index < m_Length ? m_Text[index] : L'\0'; }
    bool StartsWith(int32_t at, const wchar_t* prefix) const;
    // Where the next `what` from `at` on starts, or -1.
    int32_t Find(int32_t at, const wchar_t* what) const;
    // The position behind the next `what` from `at` on, or the end of the text.
    int32_t After(int32_t at, const wchar_t* what) const;
    int32_t NameEnd(int32_t at) const;

    int32_t Declaration(int32_t at);
    int32_t Instruction(int32_t at);
    int32_t StartTag(int32_t at);
    int32_t EndTag(int32_t at);

    int32_t AddChild(int32_t nameStart, int32_t nameLength);
    std::wstring_view Name(int32_t node) const;
    // Takes the innermost open element off the stack as one that has no end tag.
    void Abandon();

    const wchar_t* m_Text;
    int32_t m_Length;
    std::vector<XMLNode>& m_Nodes;
    std::vector<int32_t> m_Open;
    // How many elements of each written name are open: an end tag that closes
    // nothing is then passed over at once, not searched for down the stack.
    std::unordered_map<std::wstring_view, int32_t> m_OpenNames;
};

bool CParser::StartsWith(int32_t at, const wchar_t* prefix) const
{
    int32_t n = int32_t(std::wcslen(prefix));
    return at >= 0 && at <= m_Length - n && std::wmemcmp(m_Text + at, prefix, size_t(n)) == 0;
}

int32_t CParser::Find(int32_t at, const wchar_t* what) const
{
    int32_t n = int32_t(std::wcslen(what));
    for (int32_t i = at < 0 ? 0 : at; i <= m_Length - n; ++i)
        if (m_Text[i] == what[0] && std::wmemcmp(m_Text + i, what, size_t(n)) == 0)
            return i;
    return -1;
}

int32_t CParser::After(int32_t at, const wchar_t* what) const
{
    int32_t found = Find(at, what);
    return found < 0 ? m_Length : found + int32_t(std::wcslen(what));
}

int32_t CParser::NameEnd(int32_t at) const
{
    while (at < m_Length && !EndsName(m_Text[at]))
        ++at;
    return at;
}

void CParser::Run()
{
    m_Nodes.clear();
    m_Nodes.emplace_back();
    m_Nodes[0].m_InnerEnd = m_Length;
    m_Open.push_back(0);
    int32_t i = 0;
    while (i < m_Length) {
        if (m_Text[i] != L'<') {
            ++i;
        } else if (StartsWith(i, L"<!--")) {
            i = After(i + 4, L"-->");
        } else if (StartsWith(i, L"<![CDATA[")) {
            i = After(i + 9, L"]]>");
        } else if (At(i + 1) == L'!') {
            i = Declaration(i + 2);
        } else if (At(i + 1) == L'?') {
            i = Instruction(i);
        } else if (At(i + 1) == L'/') {
            i = EndTag(i);
        } else if (StartsElement(At(i + 1))) {
            i = StartTag(i);
        } else {
            // A "<" that starts no markup is text.
            ++i;
        }
    }
    while (m_Open.size() > 1)
        Abandon();
}

// <!DOCTYPE ...>, with any [internal subset]; not an entry.
int32_t CParser::Declaration(int32_t at)
{
    int32_t depth = 0;
    for (; at < m_Length; ++at) {
        wchar_t c = m_Text[at];
        if (c == L'[')
            ++depth;
        else if (c == L']' && depth > 0)
            --depth;
        else if (c == L'>' && depth == 0)
            return at + 1;
    }
    return m_Length;
}

// <?target content?>: an entry named "?target" whose text is the content.
int32_t CParser::Instruction(int32_t at)
{
    int32_t targetEnd = NameEnd(at + 2);
    int32_t node = AddChild(at + 1, targetEnd - at - 1);
    m_Nodes[size_t(node)].m_Instruction = true;
    int32_t content = targetEnd;
    while (content < m_Length && IsSpace(m_Text[content]))
        ++content;
    // An instruction left open runs to the end of the text.
    int32_t end = Find(content, L"?>");
    m_Nodes[size_t(node)].m_InnerStart = content;
    m_Nodes[size_t(node)].m_InnerEnd = end < 0 ? m_Length : end;
    return end < 0 ? m_Length : end + 2;
}

int32_t CParser::StartTag(int32_t at)
{
    int32_t nameEnd = NameEnd(at + 1);
    // The tag ends at the first ">" outside quoted attribute values; a "<" there
    // ends a tag that was never closed.
    wchar_t quote = 0;
    int32_t end = nameEnd;
    for (; end < m_Length; ++end) {
        wchar_t c = m_Text[end];
        if (quote) {
            if (c == quote)
                quote = 0;
        } else if (c == L'"' || c == L'\'') {
            quote = c;
        } else if (c == L'>' || c == L'<') {
            break;
        }
    }
    bool closed = At(end) == L'>';
    bool empty = !closed || At(end - 1) == L'/';
    int32_t node = AddChild(at + 1, nameEnd - at - 1);
    int32_t inner = closed ? end + 1 : end;
    m_Nodes[size_t(node)].m_InnerStart = inner;
    m_Nodes[size_t(node)].m_InnerEnd = inner;
    if (!empty) {
        m_Open.push_back(node);
        ++m_OpenNames[Name(node)];
    }
    return inner;
}

int32_t CParser::EndTag(int32_t at)
{
    int32_t nameStart = at + 2;
    while (nameStart < m_Length && IsSpace(m_Text[nameStart]))
        ++nameStart;
    int32_t nameEnd = NameEnd(nameStart);
    int32_t end = nameEnd;
    while (end < m_Length && m_Text[end] != L'>' && m_Text[end] != L'<')
        ++end;
    int32_t next = At(end) == L'>' ? end + 1 : end;

    std::wstring_view name(m_Text + nameStart, size_t(nameEnd - nameStart));
    auto open = m_OpenNames.find(name);
    if (open == m_OpenNames.end() || open->second == 0)
        return next;
    // Everything opened inside the element and left open had no end tag.
    while (Name(m_Open.back()) != name)
        Abandon();
    int32_t node = m_Open.back();
    m_Nodes[size_t(node)].m_InnerEnd = at;
    m_Open.pop_back();
    --open->second;
    return next;
}

int32_t CParser::AddChild(int32_t nameStart, int32_t nameLength)
{
    int32_t parent = m_Open.back();
    int32_t node = int32_t(m_Nodes.size());
    m_Nodes.emplace_back();
    m_Nodes[size_t(node)].m_NameStart = nameStart;
    m_Nodes[size_t(node)].m_NameLength = nameLength;
    XMLNode& owner = m_Nodes[size_t(parent)];
    if (owner.m_LastChild < 0)
        owner.m_FirstChild = node;
    else
        m_Nodes[size_t(owner.m_LastChild)].m_Next = node;
    owner.m_LastChild = node;
    return node;
}

std::wstring_view CParser::Name(int32_t node) const
{
    const XMLNode& entry = m_Nodes[size_t(node)];
    return std::wstring_view(m_Text + entry.m_NameStart, size_t(entry.m_NameLength));
}

void CParser::Abandon()
{
    int32_t node = m_Open.back();
    m_Open.pop_back();
    --m_OpenNames[Name(node)];
    XMLNode& element = m_Nodes[size_t(node)];
    element.m_InnerEnd = element.m_InnerStart;
    if (element.m_FirstChild < 0)
        return;
    // The element is its parent's last child, so its children follow it in one splice.
    XMLNode& parent = m_Nodes[size_t(m_Open.back())];
    element.m_Next = element.m_FirstChild;
    parent.m_LastChild = element.m_LastChild;
    element.m_FirstChild = -1;
    element.m_LastChild = -1;
}

} // namespace

void XMLParse(const wchar_t* text, int32_t length, std::vector<XMLNode>& nodes)
{
    CParser parser(text, length < 0 || !text ? 0 : length, nodes);
    parser.Run();
}
