// The reading half of the XML stream: a forgiving pass over wide text that keeps
// every element and processing instruction, in order, with its raw inner text.
// Whatever the input, it reads nothing outside the text, never recurses, and
// takes time in proportion to the text.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

// One entry of the tree. Positions are indices into the text; the children are a
// chain from m_FirstChild along m_Next, -1 ending it.
struct XMLNode {
    int32_t m_FirstChild = -1;
    int32_t m_LastChild = -1;
    int32_t m_Next = -1;
    // The name as written: for an instruction it starts at the "?".
    int32_t m_NameStart = 0;
    int32_t m_NameLength = 0;
    // What stands between the start tag and the end tag.
    int32_t m_InnerStart = 0;
    int32_t m_InnerEnd = 0;
    bool m_Instruction = false;
    // Filled on demand by the document: the name when it differs from the written
    // one, and the text of an element that has markup in it.
    bool m_TextReady = false;
    std::wstring m_Name;
    std::wstring m_Text;
};

// Builds the tree of text[0, length); node 0 is the document itself, whose
// children are the entries at the top. An element with no end tag (HTML's <br>,
// or a <p> left open) is taken as empty, and what followed it belongs to its
// parent: the reader goes on. End tags that close nothing open are passed over.
void XMLParse(const wchar_t* text, int32_t length, std::vector<XMLNode>& nodes);
