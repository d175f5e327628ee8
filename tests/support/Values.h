// Values several suites hand to the modules: variants of each kind, and "FileInfo"
// objects told apart by their author.
#pragma once
#include <string>

#include "support/Fixture.h"

namespace vxtest {

inline SmartPtr<IVariant> Variant(int value)
{
    auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    variant->put_Integer(value);
    return variant;
}

inline SmartPtr<IVariant> Variant(double value)
{
    auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    variant->put_Double(value);
    return variant;
}

inline SmartPtr<IVariant> Variant(const std::wstring& text)
{
    auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    variant->put_String(Str(text));
    return variant;
}

// A variant as the plain object that collections and parameter lists take.
template <class V> SmartPtr<IUnknown> Var(V value) { return SmartPtr<IUnknown>(Variant(value).get()); }

inline SmartPtr<IUnknown> Info(const std::wstring& author)
{
    auto info = Create<IFileInfo>(L"FileInfo");
    info->put_Author(View(author));
    return SmartPtr<IUnknown>(info.get());
}

// The author of a "FileInfo"; empty for anything else.
inline std::wstring Author(IUnknown* object)
{
    SmartPtr<IString> author;
    if (auto info = QueryAs<IFileInfo>(object))
        info->get_Author(author.Receive());
    return Text(author);
}

} // namespace vxtest
