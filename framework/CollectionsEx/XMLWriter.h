// The writing half of the XML stream: elements opened and closed in order, named
// values as <name>value</name>, each element on its own line, indented by depth.
#pragma once
#include <string>
#include <vector>

#include "runtime/REFString.h"

class CXMLWriter {
public:
    // Starts an empty text.
    void Clear();
    // Text that the caller has already made XML, such as the declaration.
    void AppendRaw(const wchar_t* text, size_t length);
    // False for an empty name: an element must have one.
    bool Open(tagREFString name);
    bool Put(tagREFString name, tagREFString value);
    // False when nothing is open.
    bool Close();

    const std::wstring& Text() const { return m_Text; }

private:
    struct OpenElement {
        std::wstring m_Name; // as written in the file
        bool m_HasChildren;
    };

    // Writes the start tag of a child of the innermost open element; gives the
    // name as written.
    std::wstring StartTag(tagREFString name);
    // A parent's first child starts the parent's content on a new line.
    void BeginChild();
    void Indent(size_t depth);

    std::wstring m_Text;
    std::vector<OpenElement> m_Open;
};
