// The framework's string: owns its text; GetBuffer gives a view of it.
#pragma once
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CCreatableString : public CObject<CCreatableString>,
                         public IObjectInfoImpl<CCreatableString>,
                         public ICreatableString {
public:
    static constexpr wchar_t kObjectName[] = L"CreatableString";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IString, ICreatableString>, Entry<ICreatableString>>;

    // A new string of this module holding a copy of the text, one reference for the
    // caller; the module's own objects make their strings here, with no lookup.
    static ICreatableString* New(tagREFString text);

    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t Clone(tagREFString text) override;
    int32_t Append(tagREFString text) override;

private:
    std::wstring m_Text;
};
