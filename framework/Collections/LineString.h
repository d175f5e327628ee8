// One line of a text file that a string collection has read: a view into the
// file's text, shared by all its lines, rather than a copy of its own. A long file
// of short lines then costs one buffer and a small object a line. Changing the
// line gives it text of its own. Lines never overlap, so whoever writes through a
// line's buffer changes that line alone, as with a string of its own.
#pragma once
#include <memory>
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

// The whole text of a file, as FileArchiveLoad gave it, kept while any line needs it.
using SharedText = std::shared_ptr<wchar_t[]>;

class CLineString : public CObject<CLineString>, public IObjectInfoImpl<CLineString>, public ICreatableString {
public:
    static constexpr wchar_t kObjectName[] = L"CreatableString";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IString, ICreatableString>, Entry<ICreatableString>>;

    // A new line over `line`, which lies inside `text`; one reference for the caller.
    static ICreatableString* New(const SharedText& text, tagREFString line);

    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t Clone(tagREFString text) override;
    int32_t Append(tagREFString text) override;

private:
    // Gives the line a copy of its text before it is changed.
    void Own();

    SharedText m_Shared;
    tagREFString m_View{0, nullptr};
    std::wstring m_Own;
    bool m_Owned = false;
};
