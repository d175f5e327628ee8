// The parameter collection: an ordered list of named values, each with an optional
// descriptor and a word of flags. A step tells with it what it needs, property pages
// edit it, and a song keeps its attributes in one. Header-only, so that the framework's
// "ParametersCreatable" and the module's own classes are the same code.
#pragma once
#include <algorithm>
#include <memory>
#include <vector>

#include "persistence/ParametersStream.h"
#include "runtime/Object.h"
#include "runtime/SmartPtr.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

// One item. Records stay where they were allocated: getParameter callers hold them.
struct PARAMETEROBJECT {
    SmartPtr<IString> m_Name;
    SmartPtr<IVariant> m_Value;
    SmartPtr<IUnknown> m_Descriptor;
    int32_t m_Flags = 0;
};

// Names are one when their lengths agree and their letters differ at most in ASCII
// case. No locale takes part: "Title" is "title", but "Ä" isn't "ä".
inline bool ParameterNameEquals(tagREFString a, tagREFString b)
{
    if (a.m_Length != b.m_Length)
        return false;
    for (int32_t i = 0; i < a.m_Length; ++i) {
        wchar_t x = a.m_Buffer[i], y = b.m_Buffer[i];
        if (x >= L'A' && x <= L'Z')
            x += 32;
        if (y >= L'A' && y <= L'Z')
            y += 32;
        if (x != y)
            return false;
    }
    return true;
}

// The order of Sort: wcscmp over the names' views, case counting. Lookups ignore
// case, the sorted order doesn't.
inline int ParameterCompareNames(tagREFString a, tagREFString b)
{
    int32_t common = std::min(a.m_Length, b.m_Length);
    for (int32_t i = 0; i < common; ++i) {
        if (a.m_Buffer[i] != b.m_Buffer[i])
            return a.m_Buffer[i] < b.m_Buffer[i] ? -1 : 1;
    }
    return a.m_Length == b.m_Length ? 0 : (a.m_Length < b.m_Length ? -1 : 1);
}

// T derives from CObject<T> and this mixin; its Lock and Unlock guard the items.
template <class T, class Base = IParameters> class IParametersImpl : public Base {
public:
    using Interfaces = QiList<Entry<ISimpleCollection, Base>, Entry<INamedCollection, Base>, Entry<IParameters, Base>>;

    IParametersImpl() = default;
    IParametersImpl(const IParametersImpl&) = delete;
    IParametersImpl& operator=(const IParametersImpl&) = delete;

    int32_t get_Count(int* count) override
    {
        if (!count)
            return E_POINTER;
        *count = Count();
        return S_OK;
    }

    int32_t get_Item(int index, IUnknown** out) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        Guard guard(this);
        return get_ItemNOLOCK(index, out);
    }

    int32_t get_Index(IUnknown* key, int* index) override
    {
        if (!index)
            return E_POINTER;
        Guard guard(this);
        return get_IndexNOLOCK(key, index);
    }

    int32_t get_ItemName(int index, IString** name) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        Guard guard(this);
        return get_ItemNameNOLOCK(index, name);
    }

    int32_t Rename(int index, IString* name) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        Guard guard(this);
        m_Items[size_t(index)]->m_Name = SmartPtr<IString>(name);
        return S_OK;
    }

    int32_t CollectionLock() override
    {
        static_cast<T*>(this)->Lock();
        m_Locked = 1;
        return S_OK;
    }

    int32_t CollectionUnlock() override
    {
        // Only a mark: a nested unlock clears it too.
        m_Locked = 0;
        static_cast<T*>(this)->Unlock();
        return S_OK;
    }

    int32_t IsCollectionLocked() override { return m_Locked; }

    int32_t Iterate(int index, IString** name, IVariant** value, IUnknown** descriptor, int* flags) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        Guard guard(this);
        PARAMETEROBJECT* item = m_Items[size_t(index)].get();
        if (name)
            *name = item->m_Name.Copy();
        if (value)
            *value = VariantOf(item).Detach();
        if (descriptor && item->m_Descriptor)
            *descriptor = item->m_Descriptor.Copy();
        if (flags)
            *flags = item->m_Flags;
        return S_OK;
    }

    int32_t get_ItemVariant(int index, IVariant** out) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        if (!out)
            return E_POINTER;
        Guard guard(this);
        SmartPtr<IUnknown> value;
        int32_t result = getParameter(m_Items[size_t(index)].get(), value.Receive());
        if (result < 0)
            return result;
        *out = AsVariant(value).Detach();
        return *out ? S_OK : E_FAIL;
    }

    int32_t put_Item(int index, IUnknown* value) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        Guard guard(this);
        return put_ItemNOLOCK(index, value);
    }

    int32_t get_ItemDescriptor(int index, IUnknown** descriptor) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        if (!descriptor)
            return E_POINTER;
        Guard guard(this);
        *descriptor = m_Items[size_t(index)]->m_Descriptor.Copy();
        return *descriptor ? S_OK : E_FAIL;
    }

    int32_t put_ItemDescriptor(int index, IUnknown* descriptor) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        Guard guard(this);
        m_Items[size_t(index)]->m_Descriptor = SmartPtr<IUnknown>(descriptor);
        return S_OK;
    }

    int32_t get_ItemFlags(int index, int* flags) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        if (!flags)
            return E_POINTER;
        *flags = m_Items[size_t(index)]->m_Flags;
        return S_OK;
    }

    int32_t put_ItemFlags(int index, int flags) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        m_Items[size_t(index)]->m_Flags = flags;
        return S_OK;
    }

    // The index found, or -1; this is no error code. mode bit 0 takes a bound input's
    // value, bit 1 unwraps a variant's object or string.
    int32_t Get(IUnknown* key, IUnknown** value, IUnknown** descriptor, int* flags, int mode) override
    {
        Guard guard(this);
        int index = -1;
        if (get_IndexNOLOCK(key, &index) < 0 || !Valid(index))
            return -1;
        PARAMETEROBJECT* item = m_Items[size_t(index)].get();
        if (value) {
            SmartPtr<IUnknown> found;
            auto input = QueryAs<IInputParameter>(item->m_Descriptor.get());
            if ((mode & 1) && input) {
                // An input that gives nothing leaves the value empty.
                if (input->get_Value(found.Receive()) < 0)
                    found.Clear();
            } else {
                found = SmartPtr<IUnknown>(item->m_Value.get());
            }
            *value = ((mode & 2) ? Unwrap(found) : found).Detach();
        }
        if (descriptor)
            *descriptor = item->m_Descriptor.Copy();
        if (flags)
            *flags = item->m_Flags;
        return index;
    }

    int32_t AddNOLOCK(IString* name, IUnknown* value, IUnknown* descriptor, int flags) override
    {
        if (m_Items.size() == m_Items.capacity())
            m_Items.reserve(m_Items.capacity() + 10);
        auto item = std::make_unique<PARAMETEROBJECT>();
        item->m_Name = SmartPtr<IString>(name);
        item->m_Value = QueryAs<IVariant>(value);
        if (!item->m_Value) {
            item->m_Value = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (!item->m_Value)
                return E_FAIL;
            if (value) {
                item->m_Value->put_Object(value);
            } else {
                // Never a null value: an empty string stands for none.
                auto empty = SmartPtr<IString>::Adopt(ISCreate(L""));
                item->m_Value->put_String(empty);
            }
        }
        item->m_Descriptor = SmartPtr<IUnknown>(descriptor);
        item->m_Flags = flags;
        m_Items.push_back(std::move(item));
        return S_OK;
    }

    int32_t get_ItemNOLOCK(int index, IUnknown** out) override
    {
        if (!out)
            return E_POINTER;
        if (!Valid(index))
            return E_INVALIDARG;
        SmartPtr<IUnknown> value;
        getParameter(m_Items[size_t(index)].get(), value.Receive());
        if (!value)
            return E_FAIL;
        *out = Unwrap(value).Detach();
        return S_OK;
    }

    int32_t put_ItemNOLOCK(int index, IUnknown* value) override
    {
        if (!Valid(index))
            return E_INVALIDARG;
        auto variant = QueryAs<IVariant>(value);
        if (!variant) {
            variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            // A failed wrap leaves the item without a value, and is still no failure.
            if (variant)
                variant->put_Object(value);
        }
        m_Items[size_t(index)]->m_Value = variant;
        return S_OK;
    }

    int32_t get_ItemNameNOLOCK(int index, IString** name) override
    {
        if (!name)
            return E_POINTER;
        if (!Valid(index))
            return E_INVALIDARG;
        *name = m_Items[size_t(index)]->m_Name.Copy();
        return *name ? S_OK : E_FAIL;
    }

    // Takes over source's items: known names get the new value, descriptor and flags,
    // others are added. A copy into itself changes nothing in number.
    int32_t Copy(IParameters* source) override
    {
        if (!source)
            return S_OK;
        Guard guard(this);
        int count = 0;
        source->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IString> name;
            SmartPtr<IVariant> value;
            SmartPtr<IUnknown> descriptor;
            int flags = 0;
            if (source->Iterate(i, name.Receive(), value.Receive(), descriptor.Receive(), &flags) < 0)
                continue;
            auto fresh = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (fresh && value)
                fresh->put_Object(value);
            int index = -1;
            if (name && get_IndexNOLOCK(name, &index) >= 0 && Valid(index)) {
                put_ItemNOLOCK(index, fresh);
                m_Items[size_t(index)]->m_Descriptor = descriptor;
                m_Items[size_t(index)]->m_Flags = flags;
                continue;
            }
            SmartPtr<IString> key = name;
            if (auto variantName = QueryAs<IVariant>(name.get()))
                key = SmartPtr<IString>::Adopt(ISCreate(variantName.get()));
            AddNOLOCK(key, fresh, descriptor, flags);
        }
        return S_OK;
    }

    // By name, case counting; bit 1 of mode then reverses the order.
    int32_t Sort(int mode) override
    {
        Guard guard(this);
        std::stable_sort(m_Items.begin(), m_Items.end(), [](const auto& a, const auto& b) {
            return ParameterCompareNames(CREFString(a->m_Name.get()), CREFString(b->m_Name.get())) < 0;
        });
        if (mode & 2) {
            // The records stay in place; their contents change places.
            for (size_t i = 0, j = m_Items.size(); i + 1 < j; ++i, --j)
                std::swap(*m_Items[i], *m_Items[j - 1]);
        }
        return S_OK;
    }

    // The stream forms (ParametersStream.cpp) work through this collection's own operations.
    int32_t Params_SaveCSV(IDataStream* stream, int mode) override { return ParamsSaveCSV(this, stream, mode); }
    int32_t Params_SaveXML(IDataStream* stream, int mode) override { return ParamsSaveXML(this, stream, mode); }
    int32_t Params_LoadXML(IDataStream* stream, int mode, int) override
    {
        return ParamsLoadXML(this, stream, mode, [this] { RemoveAll(); });
    }
    int32_t Params_SaveFolderStream(IDataStream* stream, int mode) override
    {
        return ParamsSaveFolderStream(this, stream, mode);
    }
    int32_t Params_LoadFolderStream(IDataStream* stream, int mode) override
    {
        return ParamsLoadFolderStream(this, stream, mode, [this] { RemoveAll(); });
    }
    int32_t Params_SaveXMLUnk(IDataStream* stream, int mode) override { return ParamsSaveXMLUnk(this, stream, mode); }
    int32_t Params_LoadXMLUnk(IDataStream* stream, int mode) override
    {
        return ParamsLoadXMLUnk(this, stream, mode, [this] { RemoveAll(); });
    }

    // 1 when a bound input gave the value, 0 for the stored value. A bound input
    // overrides what is stored, for every reader of the item.
    int32_t getParameter(PARAMETEROBJECT* item, IUnknown** out) override
    {
        if (!item || !out)
            return E_POINTER;
        if (auto input = QueryAs<IInputParameter>(item->m_Descriptor.get())) {
            IUnknown* bound = nullptr;
            if (input->get_Value(&bound) >= 0) {
                *out = bound;
                return 1;
            }
            if (bound)
                bound->Release();
        }
        if (!item->m_Value)
            return E_FAIL;
        *out = SmartPtr<IUnknown>(item->m_Value.get()).Detach();
        return 0;
    }

    // A key is a name (IString, or a variant holding one), a number (a variant of a
    // number kind, taken as the index whether or not it exists) or an object held.
    int32_t get_IndexNOLOCK(IUnknown* key, int* index)
    {
        if (!index)
            return E_POINTER;
        auto name = QueryAs<IString>(key);
        auto variant = QueryAs<IVariant>(key);
        SmartPtr<IUnknown> object;
        if (variant) {
            if (variant->get_Type() != VARIANT_NONE) {
                *index = variant->get_Integer();
                return S_OK;
            }
            if (variant->IsString())
                variant->get_String(name.Receive());
            else if (variant->IsObject())
                variant->get_Object(object.Receive());
        }
        if (name) {
            CREFString text(name.get());
            *index = -1;
            if (text.IsEmpty())
                return E_FAIL;
            for (size_t i = 0; i < m_Items.size(); ++i) {
                if (ParameterNameEquals(text, CREFString(m_Items[i]->m_Name.get()))) {
                    *index = int(i);
                    return S_OK;
                }
            }
            return E_FAIL;
        }
        IUnknown* wanted = object ? object.get() : key;
        if (!wanted)
            return E_FAIL;
        for (size_t i = 0; i < m_Items.size(); ++i) {
            if (HoldsObject(m_Items[i]->m_Value, wanted)) {
                *index = int(i);
                return S_OK;
            }
        }
        for (size_t i = 0; i < m_Items.size(); ++i) {
            if (m_Items[i]->m_Descriptor && SameObject(m_Items[i]->m_Descriptor.get(), wanted)) {
                *index = int(i);
                return S_OK;
            }
        }
        return E_FAIL;
    }

    // Releases every item; the room stays.
    void RemoveAll()
    {
        Guard guard(this);
        m_Items.clear();
    }

protected:
    ~IParametersImpl() = default;

    int Count() const { return int(m_Items.size()); }
    bool Valid(int index) const { return index >= 0 && size_t(index) < m_Items.size(); }

private:
    // CollectionLock for the length of one operation.
    struct Guard {
        explicit Guard(IParametersImpl* owner) : m_Owner(owner) { m_Owner->CollectionLock(); }
        ~Guard() { m_Owner->CollectionUnlock(); }
        IParametersImpl* m_Owner;
    };

    // A variant holding the value, or the value itself if it is one.
    static SmartPtr<IVariant> AsVariant(const SmartPtr<IUnknown>& value)
    {
        auto variant = value.As<IVariant>();
        if (!variant) {
            variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (variant)
                variant->put_Object(value);
        }
        return variant;
    }

    // The item's value as a variant; empty when nothing came.
    SmartPtr<IVariant> VariantOf(PARAMETEROBJECT* item)
    {
        SmartPtr<IUnknown> value;
        if (getParameter(item, value.Receive()) < 0 || !value)
            return {};
        return AsVariant(value);
    }

    // What a variant carries, if it carries an object or a string; else the value itself.
    static SmartPtr<IUnknown> Unwrap(const SmartPtr<IUnknown>& value)
    {
        auto variant = value.As<IVariant>();
        if (variant && variant->IsObject()) {
            SmartPtr<IUnknown> object;
            if (variant->get_Object(object.Receive()) >= 0 && object)
                return object;
        }
        if (variant && variant->IsString()) {
            SmartPtr<IString> text;
            if (variant->get_String(text.Receive()) >= 0 && text)
                return SmartPtr<IUnknown>(text.get());
        }
        return value;
    }

    // The value variant is the object, or carries it.
    static bool HoldsObject(const SmartPtr<IVariant>& value, IUnknown* wanted)
    {
        if (!value)
            return false;
        if (SameObject(value.get(), wanted))
            return true;
        if (!value->IsObject())
            return false;
        SmartPtr<IUnknown> object;
        value->get_Object(object.Receive());
        return object && SameObject(object.get(), wanted);
    }

    std::vector<std::unique_ptr<PARAMETEROBJECT>> m_Items;
    int32_t m_Locked = 0;
};
