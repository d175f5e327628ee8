// What an XML stream read: its own copy of the text and the tree over it. The
// streams of one text and of its elements share it, so a view of a name or a
// text stays valid while any of them lives.
#pragma once
#include <string>
#include <vector>

#include "framework/CollectionsEx/XMLParser.h"
#include "runtime/REFString.h"

class CXMLDocument {
public:
    static constexpr int32_t kRoot = 0;

    CXMLDocument(const wchar_t* text, int32_t length);

    int32_t FirstChild(int32_t node) const { return m_Nodes[size_t(node)].m_FirstChild; }
    int32_t Next(int32_t node) const { return m_Nodes[size_t(node)].m_Next; }
    bool IsInstruction(int32_t node) const { return m_Nodes[size_t(node)].m_Instruction; }

    // The name as this system knows it, with the file's escapes undone.
    tagREFString Name(int32_t node) const;
    // An element with children reads as its raw inner markup, which some readers
    // scan by themselves; any other as its text with references undone.
    tagREFString Text(int32_t node);
    // What the start tag holds behind the name, as written: the attributes.
    tagREFString Attributes(int32_t node) const;

    // The first entry of that name among `from` and the entries after it; -1 if none.
    int32_t Find(int32_t from, tagREFString name) const;
    // The first of that name inside `from` and the entries after it, in the order
    // of the text; -1 if none.
    int32_t FindInside(int32_t from, tagREFString name) const;

private:
    bool HasName(int32_t node, tagREFString name) const;
    tagREFString Slice(int32_t start, int32_t end) const;

    std::wstring m_Text;
    std::vector<XMLNode> m_Nodes;
};
