// The property table: an object publishes its fields by number, once, with the
// field's address and a type word, and a user interface reads, writes, ranges and
// lists them, and the object saves and loads them all, through this one frame.
// Header-only: the verse, the Bible and the book are the same code.
#pragma once
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <type_traits>

#include "persistence/PathMapping.h"
#include "persistence/PropertyNames.h"
#include "persistence/TagScan.h"
#include "persistence/XMLEscape.h"
#include "runtime/Module.h"
#include "runtime/Object.h"
#include "runtime/SmartPtr.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

// The pseudo-identifier of the number of properties.
constexpr int PROPERTY_COUNT = 0x2000000;

// The type word: the storage in the low four bits, then marks.
constexpr int PROPTYPE_BYTE = 1;
constexpr int PROPTYPE_SHORT = 2;
constexpr int PROPTYPE_INT = 3;
constexpr int PROPTYPE_DECIMAL = 4;
constexpr int PROPTYPE_DOUBLE = 5;
constexpr int PROPTYPE_STRING = 6;
constexpr int PROPTYPE_OBJECT = 7;
constexpr int PROPTYPE_NONE = 8;
constexpr int PROPTYPE_POINTER = 9;
constexpr int PROPTYPE_STORAGE = 0xF;
constexpr int PROPTYPE_SWITCH = 0x10;
constexpr int PROPTYPE_PATH = 0x100;
constexpr int PROPTYPE_NOSAVE = 0x4000000;
// The exact word of a colour, which the stream forms write as "#RRGGBB".
constexpr int PROPTYPE_COLOR = 0x23;

constexpr short PROPKIND_RANGE = 0;
constexpr short PROPKIND_ENUMERATION = 2;

struct PropertyEntry {
    int32_t m_ID;
    int32_t m_Type;
    void* m_Value;
    int16_t m_Kind;
    union {
        struct {
            int32_t m_Min;
            int32_t m_Max;
        };
        // Owned, for m_Kind PROPKIND_ENUMERATION.
        IUnknown* m_Enumeration;
    };
};

// T derives from CObject<T> and this mixin; Step is the growth of the record array.
template <class T, class Base = IUIPropInterrogateEx, int Step = 10> class IUIPropInterrogateImpl : public Base {
public:
    using Interfaces = QiList<Entry<IUIPropInterrogate, Base>, Entry<IUIPropInterrogateEx, Base>>;

    IUIPropInterrogateImpl() = default;
    IUIPropInterrogateImpl(const IUIPropInterrogateImpl&) = delete;
    IUIPropInterrogateImpl& operator=(const IUIPropInterrogateImpl&) = delete;
    ~IUIPropInterrogateImpl()
    {
        ClearProperties();
        // ClearProperties leaves an oversized table alone; the last word frees it anyway.
        FreeProperties();
    }

    int32_t Inquire(int id, int* value) override
    {
        if (id == PROPERTY_COUNT) {
            if (value)
                *value = m_Count;
            return S_OK;
        }
        PropertyEntry* entry = FindProperty(id);
        if (!entry)
            return E_INVALIDARG;
        if (!value || !entry->m_Value)
            return entry->m_Type;
        switch (entry->m_Type & PROPTYPE_STORAGE) {
        case PROPTYPE_BYTE:
            *value = *static_cast<unsigned char*>(entry->m_Value);
            break;
        case PROPTYPE_SHORT:
            *value = *static_cast<int16_t*>(entry->m_Value);
            break;
        case PROPTYPE_INT:
        case PROPTYPE_DECIMAL:
            *value = *static_cast<int32_t*>(entry->m_Value);
            break;
        case PROPTYPE_DOUBLE:
            *value = PropFloatBits(float(*static_cast<double*>(entry->m_Value)));
            break;
        case PROPTYPE_NONE:
            *value = 0;
            break;
        default:
            return E_FAIL;
        }
        return entry->m_Type;
    }

    // No range is tested here: the property pages keep values within their limits.
    int32_t Control(int id, int value) override
    {
        PropertyEntry* entry = FindProperty(id);
        if (!entry || !entry->m_Value)
            return E_INVALIDARG;
        switch (entry->m_Type & PROPTYPE_STORAGE) {
        case PROPTYPE_BYTE:
            *static_cast<unsigned char*>(entry->m_Value) = static_cast<unsigned char>(value);
            break;
        case PROPTYPE_SHORT:
            *static_cast<int16_t*>(entry->m_Value) = static_cast<int16_t>(value);
            break;
        case PROPTYPE_INT:
        case PROPTYPE_DECIMAL:
            *static_cast<int32_t*>(entry->m_Value) = value;
            break;
        case PROPTYPE_DOUBLE:
            *static_cast<double*>(entry->m_Value) = PropBitsFloat(value);
            break;
        default:
            break;
        }
        return S_OK;
    }

    int32_t ParameterRange(int id, int* low, int* high) override
    {
        int32_t lowest = 0, highest = 0, result = E_INVALIDARG;
        if (id == PROPERTY_COUNT) {
            result = m_Count > 0 ? S_OK : E_FAIL;
            for (int32_t i = 0; i < m_Count; ++i) {
                int32_t entryID = m_Properties[i]->m_ID;
                if (i == 0 || entryID < lowest)
                    lowest = entryID;
                if (i == 0 || entryID > highest)
                    highest = entryID;
            }
        } else if (PropertyEntry* entry = FindProperty(id); entry && entry->m_Kind == PROPKIND_RANGE) {
            lowest = entry->m_Min;
            highest = entry->m_Max;
            result = S_OK;
        }
        if (low)
            *low = lowest;
        if (high)
            *high = highest;
        return result;
    }

    int32_t ParameterEnumeration(int id, IUnknown** enumeration) override
    {
        PropertyEntry* entry = FindProperty(id);
        if (!entry || entry->m_Kind != PROPKIND_ENUMERATION || !enumeration)
            return E_INVALIDARG;
        *enumeration = entry->m_Enumeration;
        if (*enumeration)
            (*enumeration)->AddRef();
        return S_OK;
    }

    int32_t InquireEx(int id, IUnknown** value) override
    {
        PropertyEntry* entry = FindProperty(id);
        if (!entry)
            return E_INVALIDARG;
        if (!value || !entry->m_Value)
            return entry->m_Type;
        switch (entry->m_Type & PROPTYPE_STORAGE) {
        case PROPTYPE_STRING:
        case PROPTYPE_OBJECT:
            *value = *static_cast<IUnknown**>(entry->m_Value);
            if (*value)
                (*value)->AddRef();
            break;
        case PROPTYPE_DOUBLE: {
            IVariant* variant = CREFString::CreateVariant();
            if (variant)
                variant->put_Double(*static_cast<double*>(entry->m_Value));
            *value = variant;
            break;
        }
        default:
            return E_FAIL;
        }
        return entry->m_Type;
    }

    int32_t ControlEx(int id, IUnknown* value) override
    {
        PropertyEntry* entry = FindProperty(id);
        if (!entry)
            return E_INVALIDARG;
        int storage = entry->m_Type & PROPTYPE_STORAGE;
        if (storage == PROPTYPE_DOUBLE) {
            auto variant = QueryAs<IVariant>(value);
            if (!variant || !entry->m_Value)
                return E_FAIL;
            *static_cast<double*>(entry->m_Value) = variant->get_Double();
            return S_OK;
        }
        if ((storage != PROPTYPE_STRING && storage != PROPTYPE_OBJECT) || !entry->m_Value)
            return E_FAIL;
        // The new reference is taken before the lock; the exchange is what the lock guards.
        IUnknown* held = nullptr;
        if (storage == PROPTYPE_STRING)
            held = QueryAs<IString>(value).Detach();
        else if (value) {
            value->AddRef();
            held = value;
        }
        T* owner = static_cast<T*>(this);
        owner->Lock();
        IUnknown** field = static_cast<IUnknown**>(entry->m_Value);
        IUnknown* old = *field;
        *field = held;
        owner->Unlock();
        if (old)
            old->Release();
        return S_OK;
    }

    // Saves every property that may be saved under its key, each as one named value.
    int32_t UIPropInterrogate_SaveXML(INamedCollection* names, IDataStream* stream, int flags) override
    {
        auto xml = QueryAs<IXMLStream>(stream);
        if (!xml)
            return S_OK;
        SmartPtr<INamedCollection> table = PropKeyTable(names);
        for (int32_t i = 0; i < m_Count; ++i) {
            const PropertyEntry& entry = *m_Properties[i];
            if (entry.m_Type & PROPTYPE_NOSAVE)
                continue;
            SmartPtr<IString> text = PropXMLValue(entry);
            if (text)
                xml->PutAttribute(PROPKey(table, entry.m_ID), 0, text, 0);
        }
        return S_OK;
    }

    // Reads the stream's text tag by tag; a tag whose name is no property's key is skipped.
    int32_t UIPropInterrogate_LoadXML(INamedCollection* names, IDataStream* stream, int flags) override
    {
        auto source = QueryAs<IString>(stream);
        if (!source)
            return S_OK;
        SmartPtr<INamedCollection> table = PropKeyTable(names);
        CREFString text(source.get());
        for (;;) {
            CREFString name;
            if (!PROPNextTagName(text, &name))
                break;
            CREFString attributes, content;
            if (XMLGetTAGGED(text, name, attributes, content, 1) < 0) {
                // The tag doesn't close: step over its "<" and look again.
                PROPSkipPast(text);
                continue;
            }
            for (int32_t i = 0; i < m_Count; ++i) {
                const PropertyEntry& entry = *m_Properties[i];
                if ((entry.m_Type & PROPTYPE_NOSAVE) || !PROPKeyEquals(PROPKey(table, entry.m_ID), name))
                    continue;
                PropLoadXMLValue(entry, content);
                break;
            }
        }
        return S_OK;
    }

    int32_t UIPropInterrogate_SaveFolderStream(INamedCollection* names, IFolderStream* stream, int flags) override
    {
        if (!stream)
            return S_OK;
        SmartPtr<INamedCollection> table = PropKeyTable(names);
        for (int32_t i = 0; i < m_Count; ++i) {
            const PropertyEntry& entry = *m_Properties[i];
            int storage = entry.m_Type & PROPTYPE_STORAGE;
            if ((entry.m_Type & PROPTYPE_NOSAVE) || storage > PROPTYPE_OBJECT)
                continue;
            SmartPtr<IDataStream> created;
            stream->CreateFolder(PROPKey(table, entry.m_ID), 0, created.Receive());
            auto folder = created.template As<IFolderStream>();
            if (!folder)
                continue;
            folder->WriteData(PROPText(L"ID"), &entry.m_ID, 4, 0);
            folder->WriteData(PROPText(L"Flags"), &entry.m_Type, 4, 0);
            PropSaveFolderValue(entry, folder);
        }
        return S_OK;
    }

    // Folders are taken by position; "ID" says which property each one holds.
    int32_t UIPropInterrogate_LoadFolderStream(IFolderStream* stream, int flags) override
    {
        if (!stream)
            return S_OK;
        for (int index = 0;; ++index) {
            auto position = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (!position)
                return S_OK;
            position->put_Integer(index);
            SmartPtr<IDataStream> opened;
            if (stream->OpenFolder(position, 0, opened.Receive()) < 0)
                return S_OK;
            auto folder = opened.template As<IFolderStream>();
            int32_t id = 0, type = 0;
            if (!folder || folder->ReadData(PROPText(L"ID"), &id, 4, 0) < 0 ||
                folder->ReadData(PROPText(L"Flags"), &type, 4, 0) < 0)
                continue;
            PropertyEntry* entry = FindProperty(id);
            // A saved value of another type is dropped.
            if (!entry || (entry->m_Type & PROPTYPE_STORAGE) != (type & PROPTYPE_STORAGE) ||
                (entry->m_Type & PROPTYPE_NOSAVE))
                continue;
            PropLoadFolderValue(*entry, type, folder);
        }
    }

    // Registers a property with a numeric range: 0 to 1 for a switch, else 0 to 0
    // until the class sets the limits on the record returned.
    PropertyEntry* Prop(int id, void* value, int type)
    {
        PropertyEntry* entry = AppendProperty(id, value, type);
        entry->m_Kind = PROPKIND_RANGE;
        entry->m_Min = 0;
        entry->m_Max = ((type >> 4) & 0xF) == 1 ? 1 : 0;
        return entry;
    }

    // A string or object field held by a SmartPtr: the frame sees it as the pointer it holds.
    template <class I> PropertyEntry* Prop(int id, SmartPtr<I>* value, int type)
    {
        static_assert(std::is_standard_layout_v<SmartPtr<I>> && sizeof(SmartPtr<I>) == sizeof(I*));
        return Prop(id, static_cast<void*>(value), type);
    }

    // Registers a property whose choices are the "|"-separated text of string table
    // entry id of the owner's component (or of the table that owner names). The
    // choices hold values[i], or their index when there are no values. The values come
    // as an array whose length is known: a list of more choices than values gives the
    // extra choices their index rather than reading past the array.
    int32_t PropE(int id, void* value, int type, IUnknown* owner, int /*reserved*/, std::nullptr_t)
    {
        return PropEntries(id, id, value, type, owner, nullptr, 0);
    }
    template <size_t N>
    int32_t PropE(int id, void* value, int type, IUnknown* owner, int /*reserved*/, const int (&values)[N])
    {
        return PropEntries(id, id, value, type, owner, values, N);
    }

    // The same with the choices of another entry: several properties may share one list.
    int32_t PropE(int id, int entryID, void* value, int type, IUnknown* owner, std::nullptr_t)
    {
        return PropEntries(id, entryID, value, type, owner, nullptr, 0);
    }
    template <size_t N>
    int32_t PropE(int id, int entryID, void* value, int type, IUnknown* owner, const int (&values)[N])
    {
        return PropEntries(id, entryID, value, type, owner, values, N);
    }

private:
    int32_t PropEntries(int id, int entryID, void* value, int type, IUnknown* owner, const int* values,
                        size_t valueCount)
    {
        SmartPtr<IString> text = PROPOwnerTableText(owner, static_cast<T*>(this)->Primary(), entryID);
        if (!text || CREFString(text.get()).IsEmpty())
            return E_FAIL;
        auto choices = SmartPtr<ISuperCollection>::Adopt(CREFString::CreateCollection());
        if (!choices)
            return E_FAIL;
        CREFString all(text.get());
        int32_t start = 0;
        for (int index = 0; start <= all.m_Length; ++index) {
            int32_t end = start;
            while (end < all.m_Length && all.m_Buffer[end] != L'|')
                ++end;
            auto choice = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (choice)
                choice->put_Integer(size_t(index) < valueCount ? values[index] : index);
            auto label = SmartPtr<IString>::Adopt(ISCreate(CREFString(all.m_Buffer + start, end - start)));
            choices->Add(label, choice, nullptr, 0);
            start = end + 1;
        }
        PropertyEntry* entry = AppendProperty(id, value, type);
        entry->m_Kind = PROPKIND_ENUMERATION;
        entry->m_Enumeration = choices.Detach();
        return S_OK;
    }

public:
    // Forgets every property. A count outside 1 to 1000 means a table torn down
    // already, or never built, and is left alone.
    void ClearProperties()
    {
        if (m_Count - 1 < 0 || m_Count - 1 > 999)
            return;
        FreeProperties();
    }

    PropertyEntry* FindProperty(int id)
    {
        for (int32_t i = 0; i < m_Count; ++i)
            if (m_Properties[i]->m_ID == id)
                return m_Properties[i];
        return nullptr;
    }

protected:
    PropertyEntry** m_Properties = nullptr;
    int32_t m_Count = 0;
    int32_t m_Capacity = 0;

private:
    PropertyEntry* AppendProperty(int id, void* value, int type)
    {
        if (m_Count == m_Capacity) {
            int32_t capacity = m_Capacity + Step;
            auto** grown = new PropertyEntry*[size_t(capacity)];
            for (int32_t i = 0; i < m_Count; ++i)
                grown[i] = m_Properties[i];
            delete[] m_Properties;
            m_Properties = grown;
            m_Capacity = capacity;
        }
        auto* entry = new PropertyEntry{};
        entry->m_ID = id;
        entry->m_Type = (type & PROPTYPE_STORAGE) ? type : type + PROPTYPE_INT;
        entry->m_Value = value;
        m_Properties[m_Count++] = entry;
        return entry;
    }

    void FreeProperties()
    {
        for (int32_t i = 0; i < m_Count; ++i) {
            PropertyEntry* entry = m_Properties[i];
            int storage = entry->m_Type & PROPTYPE_STORAGE;
            // The fields belong to the object, which releases them itself: the
            // record only forgets their address.
            if (storage == PROPTYPE_STRING || storage == PROPTYPE_OBJECT || storage == PROPTYPE_POINTER)
                entry->m_Value = nullptr;
            if (entry->m_Kind == PROPKIND_ENUMERATION && entry->m_Enumeration)
                entry->m_Enumeration->Release();
            delete entry;
        }
        delete[] m_Properties;
        m_Properties = nullptr;
        m_Count = 0;
        m_Capacity = 0;
    }

    // The table that names the keys: the one given, else the object's own.
    SmartPtr<INamedCollection> PropKeyTable(INamedCollection* names)
    {
        return names ? SmartPtr<INamedCollection>(names) : PROPOwnerTable(nullptr, static_cast<T*>(this)->Primary());
    }

    SmartPtr<IString> PropXMLValue(const PropertyEntry& entry)
    {
        int storage = entry.m_Type & PROPTYPE_STORAGE;
        int value = 0;
        if (storage == PROPTYPE_STRING) {
            SmartPtr<IUnknown> held;
            InquireEx(entry.m_ID, held.Receive());
            SmartPtr<IString> text = QueryAs<IString>(held.get());
            if (!text)
                text = PROPText(L"");
            return (entry.m_Type & PROPTYPE_PATH) ? PROPRelativePath(text) : text;
        }
        if (storage == PROPTYPE_DECIMAL || storage == PROPTYPE_DOUBLE) {
            Inquire(entry.m_ID, &value);
            return SmartPtr<IString>::Adopt(ISCreate(double(PropBitsFloat(value)), -1));
        }
        if (entry.m_Type == PROPTYPE_COLOR) {
            Inquire(entry.m_ID, &value);
            // Stored red first in the low byte; written red first in the text.
            return SmartPtr<IString>::Adopt(ISCreateHex(PROPSwapRedBlue(unsigned(value))));
        }
        if (storage >= PROPTYPE_BYTE && storage <= PROPTYPE_INT) {
            Inquire(entry.m_ID, &value);
            return SmartPtr<IString>::Adopt(ISCreate(value));
        }
        return nullptr;
    }

    void PropLoadXMLValue(const PropertyEntry& entry, CREFString content)
    {
        int storage = entry.m_Type & PROPTYPE_STORAGE;
        if (storage == PROPTYPE_DECIMAL) {
            Control(entry.m_ID, PropFloatBits(float(_IS2Double(content))));
        } else if (storage == PROPTYPE_DOUBLE) {
            auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (variant)
                variant->put_Double(_IS2Double(content));
            ControlEx(entry.m_ID, variant);
        } else if (entry.m_Type == PROPTYPE_COLOR) {
            Control(entry.m_ID, int(_IS2Color(content, 10)));
        } else if (storage >= PROPTYPE_BYTE && storage <= PROPTYPE_INT) {
            Control(entry.m_ID, _IS2Integer(content, 10));
        } else if (storage == PROPTYPE_STRING) {
            // The stream wrote the text with references for what would read as markup.
            std::wstring plain;
            if (content.m_Length > 0)
                XMLUnescapeText(content.m_Buffer, size_t(content.m_Length), plain);
            auto text = SmartPtr<IString>::Adopt(ISCreate(CREFString(plain.data(), int32_t(plain.size()))));
            if (entry.m_Type & PROPTYPE_PATH) {
                SmartPtr<IString> absolute;
                if (FILENAMECreateAbsolute(text, absolute.Receive(), 0) >= 0 && absolute)
                    text = absolute;
            }
            ControlEx(entry.m_ID, text);
        }
    }

    void PropSaveFolderValue(const PropertyEntry& entry, IFolderStream* folder)
    {
        int storage = entry.m_Type & PROPTYPE_STORAGE;
        int value = 0;
        if (storage == PROPTYPE_DECIMAL || storage == PROPTYPE_DOUBLE) {
            Inquire(entry.m_ID, &value);
            double wide = PropBitsFloat(value);
            folder->WriteData(PROPText(L"Value"), &wide, 8, 0);
        } else if (storage == PROPTYPE_STRING) {
            SmartPtr<IUnknown> held;
            InquireEx(entry.m_ID, held.Receive());
            SmartPtr<IString> text = QueryAs<IString>(held.get());
            if (!text)
                text = PROPText(L"");
            if (entry.m_Type & PROPTYPE_PATH)
                text = PROPRelativePath(text);
            folder->WriteString(PROPText(L"Value"), text);
        } else if (storage == PROPTYPE_OBJECT) {
            SmartPtr<IUnknown> held;
            InquireEx(entry.m_ID, held.Receive());
            folder->WriteObject(PROPText(L"Value"), held, 0);
        } else {
            Inquire(entry.m_ID, &value);
            folder->WriteData(PROPText(L"Value"), &value, 4, 0);
        }
    }

    void PropLoadFolderValue(const PropertyEntry& entry, int type, IFolderStream* folder)
    {
        int storage = entry.m_Type & PROPTYPE_STORAGE;
        if (storage == PROPTYPE_STRING) {
            auto string = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
            if (!string)
                return;
            folder->ReadString(PROPText(L"Value"), string);
            SmartPtr<IString> text(string.get());
            SmartPtr<IString> path;
            if (FILENAMEUnmap(text, path.Receive()) >= 0 && path)
                text = path;
            else if ((type & PROPTYPE_PATH) && FILENAMECreateAbsolute(text, path.Receive(), 0) >= 0 && path)
                text = path;
            if (type & 0x30)
                text = PROPSlashed(text);
            ControlEx(entry.m_ID, text);
        } else if (storage == PROPTYPE_OBJECT) {
            SmartPtr<IUnknown> object;
            folder->ReadObject(PROPText(L"Value"), object.Receive(), 0);
            ControlEx(entry.m_ID, object);
        } else if (storage == PROPTYPE_DECIMAL || storage == PROPTYPE_DOUBLE) {
            double value = 0;
            folder->ReadData(PROPText(L"Value"), &value, 8, 0);
            Control(entry.m_ID, PropFloatBits(float(value)));
        } else {
            int value = 0;
            if (folder->ReadData(PROPText(L"Value"), &value, 4, 0) >= 0)
                Control(entry.m_ID, value);
        }
    }

};
