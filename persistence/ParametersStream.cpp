#include "persistence/ParametersStream.h"

#include <cwctype>
#include <string>

#include "persistence/PathMapping.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IString> Literal(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

SmartPtr<IVariant> NewVariant() { return SmartPtr<IVariant>::Adopt(CREFString::CreateVariant()); }

// One item as Iterate gives it.
struct ItemRead {
    SmartPtr<IString> m_Name;
    SmartPtr<IVariant> m_Value;
    SmartPtr<IUnknown> m_Descriptor;
    int m_Flags = 0;

    bool Read(IParameters* self, int index)
    {
        return self->Iterate(index, m_Name.Receive(), m_Value.Receive(), m_Descriptor.Receive(), &m_Flags) >= 0;
    }
};

int CountOf(IParameters* self)
{
    int count = 0;
    self->get_Count(&count);
    return count;
}

// Each item that Iterate gives, with its index.
template <class Visit> void ForEachItem(IParameters* self, Visit visit)
{
    int count = CountOf(self);
    for (int i = 0; i < count; ++i) {
        ItemRead item;
        if (item.Read(self, i))
            visit(i, item);
    }
}

// An unnamed item goes out as "Item" with its position counted from 1.
SmartPtr<IString> SavedName(IString* name, int index)
{
    if (name && !CREFString(name).IsEmpty())
        return SmartPtr<IString>(name);
    wchar_t text[32];
    _swprintf(text, 32, L"Item%d", index + 1);
    return Literal(text);
}

SmartPtr<IUnknown> ObjectOf(IVariant* value)
{
    SmartPtr<IUnknown> object;
    if (value && !value->IsString() && value->IsObject())
        value->get_Object(object.Receive());
    return object;
}

SmartPtr<IString> StringOf(IVariant* value)
{
    SmartPtr<IString> text;
    if (value && value->IsString())
        value->get_String(text.Receive());
    return text;
}

// A value as text: a string as it stands, a number in its shortest form, an object
// by its component name, anything else empty.
SmartPtr<IString> ValueText(IVariant* value)
{
    if (!value)
        return Literal(L"");
    if (auto text = StringOf(value))
        return text;
    if (value->get_Type() != VARIANT_NONE)
        return SmartPtr<IString>::Adopt(ISCreate(value, short(-1)));
    tagREFString name{0, nullptr};
    if (auto info = QueryAs<IObjectInfo>(ObjectOf(value).get()); info && info->GetName(0, &name) >= 0)
        return SmartPtr<IString>::Adopt(ISCreate(name));
    return Literal(L"");
}

void AddLocked(IParameters* self, IString* name, IUnknown* value, IUnknown* descriptor, int flags)
{
    self->CollectionLock();
    self->AddNOLOCK(name, value, descriptor, flags);
    self->CollectionUnlock();
}

bool IsNumberType(int flags)
{
    int type = flags & PARAMFLAG_TYPEMASK;
    return type == 3 || type == 5;
}

// Red and blue change places: colours are kept red first in text.
unsigned int SwapRedBlue(unsigned int colour)
{
    return (colour & 0xFF00FF00u) | ((colour & 0xFFu) << 16) | ((colour >> 16) & 0xFFu);
}

// The variant that the text of an element makes: a number if it reads as one.
SmartPtr<IVariant> Converted(IUnknown* element)
{
    SmartPtr<IString> copy = SmartPtr<IString>::Adopt(ISCreate(CREFString(element)));
    CREFString text(copy.get());
    return SmartPtr<IVariant>::Adopt(IVCreateConvert(text));
}

void SaveElement(IXMLStream* xml, IDataStream* stream, const ItemRead& item, IDataPersist* persist, int flags,
                 int mode)
{
    xml->OpenElement(item.m_Name, 0, 0);
    xml->PutAttribute(Literal(L"Value"), 0, ValueText(item.m_Value), 0);
    if (flags != 0)
        xml->PutAttribute(Literal(L"Flags"), 0, SmartPtr<IString>::Adopt(ISCreateHex(unsigned(flags))), 0);
    if (persist) {
        xml->OpenObject(persist, 0, 0);
        persist->Save(stream, mode);
        xml->CloseElement();
    }
    xml->CloseElement();
}

// The child elements of one element (or of a stream's current element), each with
// its name copied and its sub-stream.
template <class Visit> int VisitChildren(IUnknown* element, Visit visit)
{
    auto inside = QueryAs<IXMLStream>(element);
    if (!inside)
        return 0;
    int children = 0;
    tagREFString view{0, nullptr};
    while (inside->NextAttribute(&view) >= 0) {
        auto name = SmartPtr<IString>::Adopt(ISCreate(view));
        tagREFString text{0, nullptr};
        SmartPtr<IUnknown> sub;
        if (inside->GetAttribute(CREFString(name.get()), &text, sub.Receive(), 1) < 0) {
            // Stepped past what can't be fetched, so that the walk comes to an end.
            inside->Skip(0, 0, 0);
            continue;
        }
        ++children;
        visit(CREFString(name.get()), sub);
    }
    return children;
}

bool NameIs(const CREFString& name, const wchar_t* literal)
{
    return CREFString(name).CompareI(CREFString(literal), 0) == S_OK;
}

bool BeginsWithI(const CREFString& text, const CREFString& prefix)
{
    if (prefix.IsEmpty() || prefix.m_Length > text.m_Length)
        return false;
    for (int32_t i = 0; i < prefix.m_Length; ++i)
        if (std::towlower(wint_t(text.m_Buffer[i])) != std::towlower(wint_t(prefix.m_Buffer[i])))
            return false;
    return true;
}

SmartPtr<IVariant> VariantOfString(IString* text)
{
    auto variant = NewVariant();
    if (variant)
        variant->put_String(text);
    return variant;
}

} // namespace

int32_t ParamsSaveXML(IParameters* self, IDataStream* stream, int mode)
{
    auto xml = QueryAs<IXMLStream>(stream);
    if (!xml)
        return S_OK;
    ForEachItem(self, [&](int i, ItemRead& item) {
        auto persist = QueryAs<IDataPersist>(item.m_Descriptor.get());
        int flags = item.m_Flags & ~PARAMFLAG_TRANSIENT;
        bool attribute = false;
        if (!(mode & PARAMS_COMPACT)) {
            attribute = !persist && flags == 0;
        } else {
            if (flags & PARAMFLAG_DROPDESCRIPTOR) {
                flags &= ~PARAMFLAG_DROPDESCRIPTOR;
                persist.Clear();
            }
            bool decided = false;
            if (flags & PARAMFLAG_NOTCOMPACT) {
                if (persist) {
                    persist.Clear();
                } else {
                    int type = flags & PARAMFLAG_TYPEMASK;
                    attribute = type == 3 || type == 5 || type == 6;
                    decided = true;
                }
            }
            if (!decided) {
                if (flags == 35 && !persist && item.m_Value && item.m_Value->get_Type() != VARIANT_NONE) {
                    unsigned int colour = SwapRedBlue(unsigned(item.m_Value->get_Integer()));
                    xml->PutAttribute(item.m_Name, 0, SmartPtr<IString>::Adopt(ISCreateHex(colour)), 0);
                    return;
                }
                int type = flags & PARAMFLAG_TYPEMASK;
                if (type == 3 || type == 5 || type == 6 || flags == 9)
                    flags = 0;
                attribute = !persist && flags == 0;
            }
        }
        if (attribute)
            xml->PutAttribute(item.m_Name, 0, ValueText(item.m_Value), 0);
        else
            SaveElement(xml, stream, item, persist, flags, mode);
    });
    return S_OK;
}

int32_t ParamsLoadXML(IParameters* self, IDataStream* stream, int mode, const ParamsRemoveAll& removeAll)
{
    auto xml = QueryAs<IXMLStream>(stream);
    if (!xml)
        return S_OK;
    if (mode & PARAMS_REPLACE)
        removeAll();
    VisitChildren(xml, [&](const CREFString& view, const SmartPtr<IUnknown>& element) {
        auto name = SmartPtr<IString>::Adopt(ISCreate(view));
        if (mode & PARAMS_REPLACE) {
            // Types come from the text alone; flags and descriptors are not kept.
            AddLocked(self, name, Converted(element), nullptr, 0);
            return;
        }
        int index = -1;
        if (self->get_Index(name, &index) < 0)
            return;
        int children = VisitChildren(element, [&](const CREFString& child, const SmartPtr<IUnknown>& sub) {
            if (NameIs(child, L"Value")) {
                self->put_Item(index, Converted(sub));
            } else if (NameIs(child, L"Flags")) {
                self->put_ItemFlags(index, _IS2Integer(CREFString(sub.get()), 10));
            } else if (auto reader = sub.As<IXMLStream>()) {
                SmartPtr<IUnknown> object;
                if (reader->ReadObjectOfClass(child, object.Receive()) >= 0)
                    self->put_ItemDescriptor(index, object);
            }
        });
        if (children == 0)
            self->put_Item(index, Converted(element));
    });
    return S_OK;
}

int32_t ParamsSaveXMLUnk(IParameters* self, IDataStream* stream, int mode)
{
    auto xml = QueryAs<IXMLStream>(stream);
    if (!xml)
        return S_OK;
    ForEachItem(self, [&](int i, ItemRead& item) {
        auto persist = QueryAs<IDataPersist>(ObjectOf(item.m_Value).get());
        if (!persist)
            return;
        xml->OpenElement(SavedName(item.m_Name, i), 0, 0);
        if (item.m_Flags != 0)
            xml->PutAttribute(Literal(L"Flags"), 0, SmartPtr<IString>::Adopt(ISCreateHex(unsigned(item.m_Flags))), 0);
        xml->OpenObject(persist, 0, 0);
        persist->Save(stream, mode);
        xml->CloseElement();
        if (auto described = QueryAs<IDataPersist>(item.m_Descriptor.get())) {
            xml->OpenElement(Literal(L"ItemDescriptor"), 0, 0);
            xml->OpenObject(described, 0, 0);
            described->Save(stream, mode);
            xml->CloseElement();
            xml->CloseElement();
        }
        xml->CloseElement();
    });
    return S_OK;
}

int32_t ParamsLoadXMLUnk(IParameters* self, IDataStream* stream, int mode, const ParamsRemoveAll& removeAll)
{
    auto xml = QueryAs<IXMLStream>(stream);
    if (!xml)
        return S_OK;
    if (mode & PARAMS_REPLACE)
        removeAll();
    VisitChildren(xml, [&](const CREFString& view, const SmartPtr<IUnknown>& element) {
        auto name = SmartPtr<IString>::Adopt(ISCreate(view));
        SmartPtr<IUnknown> value;
        SmartPtr<IUnknown> descriptor;
        int flags = 0;
        if (mode & PARAMS_BYNAME) {
            int index = -1;
            if (self->get_Index(name, &index) >= 0)
                self->get_Item(index, value.Receive());
        }
        VisitChildren(element, [&](const CREFString& child, const SmartPtr<IUnknown>& sub) {
            auto reader = sub.As<IXMLStream>();
            if (NameIs(child, L"Flags")) {
                flags = _IS2Integer(CREFString(sub.get()), 10);
            } else if (NameIs(child, L"ItemDescriptor")) {
                descriptor.Clear();
                if (reader)
                    reader->ReadObject(descriptor.Receive());
            } else if (!value) {
                if (reader)
                    reader->ReadObjectOfClass(child, value.Receive());
            } else {
                // A value already there loads only an element of its own class.
                auto persist = value.As<IDataPersist>();
                auto info = value.As<IObjectInfo>();
                tagREFString className{0, nullptr};
                if (persist && info && info->GetName(0, &className) >= 0 &&
                    CREFString(className).CompareI(child, 0) >= 0)
                    persist->Load(sub.As<IDataStream>(), 0);
            }
        });
        if (mode & PARAMS_REPLACE) {
            if (!CREFString(name.get()).IsEmpty() && value)
                AddLocked(self, name, value, descriptor, flags);
            return;
        }
        int index = -1;
        if (self->get_Index(name, &index) >= 0) {
            self->put_Item(index, value);
            self->put_ItemFlags(index, flags);
            self->put_ItemDescriptor(index, descriptor);
        }
    });
    return S_OK;
}

int32_t ParamsSaveCSV(IParameters* self, IDataStream* stream, int mode)
{
    auto csv = QueryAs<ICSVStream>(stream);
    if (!csv)
        return S_OK;
    // Two bytes for each character from the start of the wide text: with 4-byte
    // characters that is the first half of the buffer. Readers expect exactly that.
    auto write = [&](const tagREFString& text) {
        if (text.m_Length > 0 && text.m_Buffer)
            csv->Write(text.m_Buffer, text.m_Length * 2, 0);
    };
    int written = 0;
    ForEachItem(self, [&](int i, ItemRead& item) {
        if ((mode & PARAMS_COMPACT) && (item.m_Flags & PARAMFLAG_NOTCOMPACT))
            return;
        if (written > 0)
            write(REFLiteral(L","));
        if (mode & PARAMS_WITHNAMES) {
            write(CREFString(item.m_Name.get()));
            write(REFLiteral(L"="));
        }
        SmartPtr<IString> text = ValueText(item.m_Value);
        write(CREFString(text.get()));
        ++written;
    });
    return S_OK;
}

SmartPtr<IVariant> ParamsPathForSaving(IVariant* value, int* flags)
{
    SmartPtr<IString> path = StringOf(value);
    if (!path || !(*flags & PARAMFLAG_FILENAME))
        return SmartPtr<IVariant>(value);
    SmartPtr<IString> result = path;
    if (!(*flags & PARAMFLAG_KEEPPATH)) {
        SmartPtr<IString> mapped;
        if (FILENAMEMap(path, mapped.Receive(), 0) >= 0 && mapped)
            result = mapped;
    }
    SmartPtr<IString> install;
    FILENAMEGetInstallPath(install.Receive());
    if ((*flags & PARAMFLAG_KEEPPATH) && !(*flags & PARAMFLAG_INSTALLRELATIVE) &&
        BeginsWithI(CREFString(path.get()), CREFString(install.get())))
        *flags |= PARAMFLAG_INSTALLRELATIVE;
    if (*flags & PARAMFLAG_INSTALLRELATIVE) {
        SmartPtr<IString> relative;
        SmartPtr<IString> mapped;
        if (install && FILENAMECreateRelative(install, path, relative.Receive()) >= 0 && relative)
            result = relative;
        else if (FILENAMEMap(path, mapped.Receive(), 0) >= 0 && mapped)
            result = mapped;
        else
            result = path;
    }
    if (result.get() == path.get())
        return SmartPtr<IVariant>(value);
    return VariantOfString(result);
}

SmartPtr<IVariant> ParamsPathFromLoading(IVariant* value, int flags, bool replaceOnlyIfUnresolved)
{
    SmartPtr<IString> path = StringOf(value);
    if (!path || !(flags & PARAMFLAG_FILENAME))
        return SmartPtr<IVariant>(value);
    SmartPtr<IString> resolved;
    bool unmapped = FILENAMEUnmap(path, resolved.Receive()) >= 0 && resolved;
    if (!unmapped) {
        resolved.Clear();
        if (!(flags & PARAMFLAG_INSTALLRELATIVE) || FILENAMECreateAbsolute(path, resolved.Receive(), 0) < 0)
            resolved.Clear();
    }
    if (resolved)
        return VariantOfString(resolved);
    // Only a path that stayed as it was read gets its separators turned; on loading
    // in place only when neither the mapping nor the install path took it.
    bool slashes = (flags & PARAMFLAG_KEEPPATH) != 0;
    if (replaceOnlyIfUnresolved)
        slashes = !unmapped && !(flags & PARAMFLAG_INSTALLRELATIVE);
    if (!slashes)
        return SmartPtr<IVariant>(value);
    std::wstring text(CREFString(path.get()).m_Buffer ? CREFString(path.get()).m_Buffer : L"",
                      size_t(CREFString(path.get()).m_Length > 0 ? CREFString(path.get()).m_Length : 0));
    for (wchar_t& c : text)
        if (c == L'\\')
            c = L'/';
    return VariantOfString(SmartPtr<IString>::Adopt(ISCreate(CREFString(text.data(), int32_t(text.size())))));
}

namespace {

// Whether an item is one plain key, a folder, or not saved at all.
enum class FolderForm { Skip, Key, Folder };

FolderForm ChooseForm(int mode, int* flags, SmartPtr<IUnknown>& descriptor)
{
    if (!(mode & PARAMS_COMPACT)) {
        if (*flags & PARAMFLAG_NEVERSAVED)
            return FolderForm::Skip;
        return (*flags != 0 || descriptor) ? FolderForm::Folder : FolderForm::Key;
    }
    if ((*flags & 240) == 64) {
        if (!QueryAs<IInputParameter>(descriptor.get()))
            descriptor.Clear();
        *flags = 0;
    }
    if (IsNumberType(*flags) || *flags == 9)
        *flags = 0;
    if (descriptor)
        return (*flags & PARAMFLAG_NEVERSAVED) ? FolderForm::Skip : FolderForm::Folder;
    if (*flags & (PARAMFLAG_NOTCOMPACT | PARAMFLAG_NEVERSAVED))
        return FolderForm::Skip;
    return *flags != 0 ? FolderForm::Folder : FolderForm::Key;
}

void SaveFolderItem(IParameters* self, IFolderStream* folder, IString* name, ItemRead& item, int flags)
{
    SmartPtr<IDataStream> created;
    folder->CreateFolder(name, 0, created.Receive());
    auto sub = created.As<IFolderStream>();
    if (!sub)
        return;
    SmartPtr<IVariant> value = ParamsPathForSaving(item.m_Value, &flags);
    SmartPtr<IUnknown> object = ObjectOf(value);
    if (value && (value->IsString() || !object))
        sub->WriteString(Literal(L"Value"), value);
    else if (object && !QueryAs<IInputParameter>(item.m_Descriptor.get()) && !SameObject(object, self))
        sub->WriteObject(Literal(L"Unknown"), object, 0);
    if (flags != 0)
        sub->WriteData(Literal(L"Flags"), &flags, int(sizeof(flags)), 0);
    if (item.m_Descriptor && !SameObject(item.m_Descriptor, self))
        sub->WriteObject(Literal(L"Descriptor"), item.m_Descriptor, 0);
}

// A folder item: its flags, value (a string or an object) and descriptor.
SmartPtr<IVariant> ReadFolderItem(IFolderStream* sub, int* flags, SmartPtr<IUnknown>& descriptor, bool inPlace)
{
    *flags = 0;
    sub->ReadData(Literal(L"Flags"), flags, int(sizeof(*flags)), 0);
    auto variant = NewVariant();
    if (!variant)
        return variant;
    if (sub->ReadString(Literal(L"Value"), variant) < 0) {
        SmartPtr<IUnknown> object;
        if (sub->ReadObject(Literal(L"Unknown"), object.Receive(), 0) >= 0 && object)
            variant->put_Object(object);
    }
    sub->ReadObject(Literal(L"Descriptor"), descriptor.Receive(), 0);
    return ParamsPathFromLoading(variant, *flags, inPlace);
}

SmartPtr<IVariant> ReadPlainKey(IFolderStream* folder, IString* name)
{
    auto variant = NewVariant();
    if (variant)
        folder->ReadString(name, variant);
    return variant;
}

} // namespace

int32_t ParamsSaveFolderStream(IParameters* self, IDataStream* stream, int mode)
{
    auto folder = QueryAs<IFolderStream>(stream);
    if (!folder)
        return S_OK;
    ForEachItem(self, [&](int i, ItemRead& item) {
        SmartPtr<IString> name = SavedName(item.m_Name, i);
        int flags = item.m_Flags;
        FolderForm form = ChooseForm(mode, &flags, item.m_Descriptor);
        if (form == FolderForm::Skip)
            return;
        // An object can't be a plain key.
        if (form == FolderForm::Key && item.m_Value && !ObjectOf(item.m_Value)) {
            folder->WriteString(name, item.m_Value);
            return;
        }
        SaveFolderItem(self, folder, name, item, flags);
    });
    return S_OK;
}

int32_t ParamsLoadFolderStream(IParameters* self, IDataStream* stream, int mode, const ParamsRemoveAll& removeAll)
{
    auto folder = QueryAs<IFolderStream>(stream);
    auto entries = QueryAs<INamedCollection>(stream);
    if (!folder)
        return S_OK;
    if (mode & PARAMS_REPLACE)
        removeAll();
    if (!entries)
        return S_OK;
    if (mode & PARAMS_REPLACE) {
        int count = 0;
        entries->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IString> name;
            SmartPtr<IUnknown> entry;
            entries->get_ItemName(i, name.Receive());
            if (entries->get_Item(i, entry.Receive()) < 0)
                continue;
            SmartPtr<IUnknown> descriptor;
            int flags = 0;
            SmartPtr<IVariant> value;
            if (auto sub = entry.As<IFolderStream>())
                value = ReadFolderItem(sub, &flags, descriptor, false);
            else
                value = ReadPlainKey(folder, name);
            AddLocked(self, name, value, descriptor, flags);
        }
        return S_OK;
    }
    int count = CountOf(self);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        int index = -1;
        if (self->get_ItemName(i, name.Receive()) < 0 || entries->get_Index(name, &index) < 0)
            continue;
        SmartPtr<IUnknown> entry;
        if (entries->get_Item(index, entry.Receive()) < 0)
            continue;
        auto sub = entry.As<IFolderStream>();
        if (!sub) {
            self->put_Item(i, ReadPlainKey(folder, name));
            continue;
        }
        // The flags serve the path rule; the collection keeps its own.
        SmartPtr<IUnknown> descriptor;
        int flags = 0;
        self->put_Item(i, ReadFolderItem(sub, &flags, descriptor, true));
        if (descriptor)
            self->put_ItemDescriptor(i, descriptor);
    }
    return S_OK;
}
