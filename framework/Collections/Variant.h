// The framework's variant: nothing, an integer, a double, a string or an object.
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CVariant : public CObject<CVariant>, public IObjectInfoImpl<CVariant>, public IVariant {
public:
    static constexpr wchar_t kObjectName[] = L"Variant";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVariant>>;

    short get_Type() override;
    double get_Double() override;
    int get_Integer() override;
    int32_t put_Integer(int value) override;
    int32_t put_Double(double value) override;
    short IsObject() override;
    int32_t get_Object(IUnknown** out) override;
    int32_t put_Object(IUnknown* value) override;
    short IsString() override;
    int32_t get_String(IString** out) override;
    int32_t put_String(IString* value) override;

private:
    enum class Kind { None, Integer, Double, String, Object };
    void Reset();

    Kind m_Kind = Kind::None;
    int m_Integer = 0;
    double m_Double = 0.0;
    SmartPtr<IUnknown> m_Object; // the string or the object
};
