#include "framework/Collections/Variant.h"

#include <cmath>
#include <limits>

#include "framework/Collections/CreatableString.h"
#include "runtime/ValueConversion.h"

void CVariant::Reset()
{
    m_Kind = Kind::None;
    m_Integer = 0;
    m_Double = 0.0;
    m_Object.Clear();
}

short CVariant::get_Type()
{
    switch (m_Kind) {
    case Kind::Integer:
        return VARIANT_INTEGER;
    case Kind::Double:
        return VARIANT_DOUBLE;
    default:
        return VARIANT_NONE;
    }
}

double CVariant::get_Double()
{
    switch (m_Kind) {
    case Kind::Integer:
        return double(m_Integer);
    case Kind::Double:
        return m_Double;
    case Kind::String:
        // A string that holds a number reads as that number.
        return _IS2Double(CREFString(m_Object.get()));
    default:
        return 0.0;
    }
}

int CVariant::get_Integer()
{
    if (m_Kind == Kind::Integer)
        return m_Integer;
    if (m_Kind == Kind::String)
        return _IS2Integer(CREFString(m_Object.get()), 10);
    if (m_Kind != Kind::Double || !std::isfinite(m_Double))
        return 0;
    // Out of range values saturate instead of overflowing.
    if (m_Double >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (m_Double <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return int(m_Double);
}

int32_t CVariant::put_Integer(int value)
{
    Reset();
    m_Kind = Kind::Integer;
    m_Integer = value;
    return S_OK;
}

int32_t CVariant::put_Double(double value)
{
    Reset();
    m_Kind = Kind::Double;
    m_Double = value;
    return S_OK;
}

short CVariant::IsObject() { return m_Kind == Kind::Object ? 1 : 0; }

int32_t CVariant::get_Object(IUnknown** out)
{
    if (!out)
        return E_POINTER;
    if (m_Kind != Kind::Object && m_Kind != Kind::String) {
        *out = nullptr;
        return E_FAIL;
    }
    *out = m_Object.Copy();
    return S_OK;
}

int32_t CVariant::put_Object(IUnknown* value)
{
    // Another variant gives its value; anything else is held as an object.
    if (auto other = QueryAs<IVariant>(value)) {
        if (SameObject(other.get(), Primary()))
            return S_OK;
        if (other->IsString()) {
            SmartPtr<IString> text;
            other->get_String(text.Receive());
            return put_String(text);
        }
        if (other->IsObject()) {
            SmartPtr<IUnknown> object;
            other->get_Object(object.Receive());
            return put_Object(object);
        }
        if (other->get_Type() == VARIANT_INTEGER)
            return put_Integer(other->get_Integer());
        if (other->get_Type() == VARIANT_DOUBLE)
            return put_Double(other->get_Double());
        Reset();
        return S_OK;
    }
    // Nothing stored reads as the empty string, so a value always has a text.
    if (!value)
        return put_String(nullptr);
    // A string given as an object is a string value: song attributes and
    // parameter values arrive this way and must read back as their text.
    // Other objects with a text face (verses, references) stay objects.
    if (auto text = QueryAs<ICreatableString>(value))
        return put_String(text);
    SmartPtr<IUnknown> keep(value);
    Reset();
    m_Kind = Kind::Object;
    m_Object = keep;
    return S_OK;
}

short CVariant::IsString() { return m_Kind == Kind::String ? 1 : 0; }

int32_t CVariant::get_String(IString** out)
{
    if (!out)
        return E_POINTER;
    if (m_Kind != Kind::String)
        return E_FAIL;
    return m_Object->QueryInterface(IID_IString, reinterpret_cast<void**>(out));
}

int32_t CVariant::put_String(IString* value)
{
    // The variant keeps its own copy, so a caller that changes its string
    // afterwards doesn't change the value held here.
    SmartPtr<IUnknown> keep;
    keep.Attach(CCreatableString::New(CREFString(value)));
    Reset();
    m_Kind = Kind::String;
    m_Object = keep;
    return S_OK;
}
