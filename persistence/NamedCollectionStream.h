// The named collection in a stream: one element (XML) or one folder (folder
// stream) per item, in order. Stream failures are not passed on: what was read
// so far stays.
#pragma once
#include "persistence/NamedCollection.h"
#include "runtime/ValueConversion.h"

// A framework string of a literal, owned by the caller's smart pointer.
inline SmartPtr<IString> COLLECTIONString(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

// The element or folder of an item is named after it; an unnamed item is "Item"
// with its position counted from 1.
template <class T, class Base, class Item>
SmartPtr<IString> INamedCollectionImpl<T, Base, Item>::SavedName(ItemRecord* record, int32_t index)
{
    if (record->m_Name && !CREFString(record->m_Name).IsEmpty())
        return SmartPtr<IString>(record->m_Name);
    wchar_t text[32];
    _swprintf(text, 32, L"Item%d", index + 1);
    return COLLECTIONString(text);
}

// One form is written: the XML one when the stream offers it, else the folder one.
// A stream that offers both is thus written in the XML form only, though Load reads
// it in both; the two are not symmetrical, and are kept so. A stream that is
// neither form, or none at all, gets nothing written.
template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::Save(IDataStream* stream, int flags)
{
    if (!stream)
        return S_OK;
    if (auto xml = QueryAs<IXMLStream>(stream))
        SaveXML(xml, stream, flags);
    else if (auto folder = QueryAs<IFolderStream>(stream))
        SaveFolder(folder, flags);
    return S_OK;
}

// Items that can't save themselves are left out of the XML form.
template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::SaveXML(IXMLStream* xml, IDataStream* stream, int flags)
{
    for (int32_t i = 0; i < m_Count; ++i) {
        ItemRecord* record = m_Items[i];
        auto persist = QueryAs<IDataPersist>(record->m_Item);
        if (!persist)
            continue;
        SmartPtr<IString> name = SavedName(record, i);
        auto attached = QueryAs<IDataPersist>(record->m_Attached);
        int32_t itemFlags = record->m_Flags;

        xml->OpenElement(name, 0, 0);
        if (itemFlags != 0) {
            auto value = SmartPtr<IString>::Adopt(ISCreate(int(itemFlags)));
            xml->PutAttribute(COLLECTIONString(L"Flags"), 0, value, 0);
        }
        xml->OpenObject(persist, 0, 0);
        persist->Save(stream, flags);
        xml->CloseElement();
        if (attached) {
            xml->OpenElement(COLLECTIONString(L"AttachedItem"), 0, 0);
            xml->OpenObject(attached, 0, 0);
            attached->Save(stream, flags);
            xml->CloseElement();
            xml->CloseElement();
        }
        xml->CloseElement();
    }
    return S_OK;
}

template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::SaveFolder(IFolderStream* folder, int flags)
{
    for (int32_t i = 0; i < m_Count; ++i) {
        ItemRecord* record = m_Items[i];
        SmartPtr<IUnknown> item(record->m_Item);
        SmartPtr<IUnknown> attached(record->m_Attached);
        int32_t itemFlags = record->m_Flags;

        SmartPtr<IDataStream> created;
        folder->CreateFolder(SavedName(record, i), 0, created.Receive());
        auto sub = created.As<IFolderStream>();
        if (!sub)
            continue;
        if (itemFlags != 0)
            sub->WriteData(COLLECTIONString(L"Flags"), &itemFlags, int(sizeof(itemFlags)), 0);
        sub->WriteObject(COLLECTIONString(L"Item"), item, flags);
        if (attached)
            sub->WriteObject(COLLECTIONString(L"ItemAttached"), attached, 0);
    }
    return S_OK;
}

// A stream that is both forms is read in both, the XML one first.
template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::Load(IDataStream* stream, int flags)
{
    if (!stream)
        return S_OK;
    if (auto xml = QueryAs<IXMLStream>(stream))
        LoadXML(xml, flags);
    if (auto folder = QueryAs<IFolderStream>(stream))
        LoadFolder(folder);
    return S_OK;
}

// Without COLLECTION_LOAD_CLEAR the XML form only updates the items whose names
// are there already; with COLLECTION_LOAD_MERGE those items load in place.
template <class T, class Base, class Item>
void INamedCollectionImpl<T, Base, Item>::LoadXML(IXMLStream* xml, int flags)
{
    if (flags & COLLECTION_LOAD_CLEAR)
        CollectionClear();
    tagREFString name{0, nullptr};
    while (SUCCEEDED(xml->NextAttribute(&name)))
        LoadXMLElement(xml, name, flags);
}

template <class T, class Base, class Item>
void INamedCollectionImpl<T, Base, Item>::LoadXMLElement(IXMLStream* xml, const tagREFString& name, int flags)
{
    // A copy: the view into the stream need not outlive what follows.
    auto itemName = SmartPtr<IString>::Adopt(ISCreate(name));
    SmartPtr<IUnknown> item;
    SmartPtr<IUnknown> attached;
    int itemFlags = 0;
    if (flags & COLLECTION_LOAD_MERGE) {
        int index = m_Count;
        this->get_Index(itemName, &index);
        this->get_Item(index, item.Receive());
    }

    tagREFString value{0, nullptr};
    SmartPtr<IUnknown> element;
    if (FAILED(xml->GetAttribute(CREFString(itemName.get()), &value, element.Receive(), 1))) {
        // NextAttribute names an element without passing it; only a fetch, a read
        // or a Skip moves on. An element that can't be fetched is therefore
        // skipped here, or the walk would name it again and never end.
        xml->Skip(0, 0, 0);
        return;
    }
    auto inside = element.As<IXMLStream>();
    if (!inside)
        return;
    tagREFString innerView{0, nullptr};
    while (SUCCEEDED(inside->NextAttribute(&innerView))) {
        auto innerName = SmartPtr<IString>::Adopt(ISCreate(innerView));
        CREFString inner(innerName.get());
        SmartPtr<IUnknown> sub;
        if (FAILED(inside->GetAttribute(inner, &value, sub.Receive(), 1))) {
            inside->Skip(0, 0, 0);
            continue;
        }

        if (inner.CompareI(REFLiteral(L"Flags"), 0) == S_OK) {
            itemFlags = _IS2Integer(CREFString(sub.get()), 10);
        } else if (inner.CompareI(REFLiteral(L"AttachedItem"), 0) == S_OK) {
            attached.Clear();
            if (auto reader = sub.As<IXMLStream>())
                reader->ReadObject(attached.Receive());
        } else if (!item) {
            // Any other name is the class of the item.
            if (auto reader = sub.As<IXMLStream>())
                reader->ReadObjectOfClass(inner, item.Receive());
        } else {
            // An item already there reads only an element of its own class.
            auto persist = item.As<IDataPersist>();
            auto info = item.As<IObjectInfo>();
            tagREFString className{0, nullptr};
            if (persist && info && SUCCEEDED(info->GetName(0, &className)) &&
                SUCCEEDED(CREFString(className).CompareI(inner, 0))) {
                persist->Load(sub.As<IDataStream>(), 0);
            }
        }

        // After every inner element, whatever it was. An item followed by its
        // "AttachedItem" is thus added twice when clearing: once without, once
        // with its attached object. That is how the stream form works.
        if (flags & COLLECTION_LOAD_CLEAR) {
            if (!CREFString(itemName.get()).IsEmpty() && item)
                this->Add(itemName, item, attached, itemFlags);
        } else {
            int index = 0;
            if (SUCCEEDED(this->get_Index(itemName, &index))) {
                this->put_Item(index, item);
                this->put_ItemFlags(index, itemFlags);
                this->put_ItemAttached(index, attached);
            }
        }
    }
}

// The folder form always starts afresh; an entry without an "Item" is dropped,
// since Add refuses a null item.
template <class T, class Base, class Item> void INamedCollectionImpl<T, Base, Item>::LoadFolder(IFolderStream* folder)
{
    CollectionClear();
    auto entries = QueryAs<INamedCollection>(folder);
    if (!entries)
        return;
    for (int i = 0;; ++i) {
        SmartPtr<IUnknown> entry;
        if (FAILED(entries->get_Item(i, entry.Receive())))
            break;
        auto sub = entry.As<IFolderStream>();
        if (!sub)
            continue;
        SmartPtr<IString> name;
        entries->get_ItemName(i, name.Receive());
        int32_t itemFlags = 0;
        sub->ReadData(COLLECTIONString(L"Flags"), &itemFlags, int(sizeof(itemFlags)), 0);
        SmartPtr<IUnknown> item;
        SmartPtr<IUnknown> attached;
        sub->ReadObject(COLLECTIONString(L"Item"), item.Receive(), 0);
        sub->ReadObject(COLLECTIONString(L"ItemAttached"), attached.Receive(), 0);
        this->Add(name, item, attached, itemFlags);
    }
}
