// The file archive mixin: ties an object to a file by name, and moves it to and from
// that file through its IDataPersist face, in one of two generic forms chosen by the
// first letter of the extension: "x" for the XML form, "t" for the folder form.
// Songs, books and Bibles override Load, Save and Unload for their own file types
// and fall back on these.
#pragma once
#include <string>
#include <cwctype>

#include "persistence/FileBuffer.h"
#include "persistence/PathMapping.h"
#include "runtime/Module.h"
#include "runtime/Object.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

// What Inquire answers for the modified and has-file flags, and for a set encoding.
constexpr int32_t ARCHIVE_FLAG_STATE = 0x40013;
constexpr int32_t ARCHIVE_ENCODING_STATE = 0x13;
// SaveXML's flag that hands the flags on to the stream's put_Mode.
constexpr int ARCHIVE_SAVE_MODE = 0x800000;

template <class T, class Base> class IFileArchiveImpl : public Base {
public:
    using Interfaces = QiList<Entry<IFileArchive, Base>>;

    IFileArchiveImpl() = default;
    IFileArchiveImpl(const IFileArchiveImpl&) = delete;
    IFileArchiveImpl& operator=(const IFileArchiveImpl&) = delete;

    int32_t get_Filename(IString** name) override { return Hand(m_Filename, name); }

    int32_t put_Filename(IString* name) override
    {
        SmartPtr<IString> named(name);
        CREFString given(name);
        // "./" or ".\" names a file below the installation, wherever it was moved.
        if (given.m_Length > 2 && given.At(0) == L'.' && (given.At(1) == L'\\' || given.At(1) == L'/'))
            named = BelowInstallation(CREFString(given.m_Buffer + 2, given.m_Length - 2));
        CREFString present(m_Filename.get());
        if (present.CompareI(CREFString(named.get()), 0) != S_OK)
            m_HasFile = 0;
        m_Modified = 1;
        m_Filename = named;
        return S_OK;
    }

    int32_t get_Filter(IString** filter, short /*index*/) override { return Hand(m_Filter, filter); }

    int32_t get_Name(IString** name) override
    {
        if (!name)
            return E_POINTER;
        CREFString file(m_Filename.get());
        if (file.IsEmpty())
            return E_FAIL;
        int32_t last = LastOf(file, L'/', file.m_Length);
        int32_t start = last + 1;
        // The folder above the file stays in the name when asked for.
        if (m_NameWithFolder && last >= 0)
            start = LastOf(file, L'/', last) + 1;
        CREFString rest(file.m_Buffer + start, file.m_Length - start);
        int32_t dot = LastOf(rest, L'.', rest.m_Length);
        if (dot > 0)
            rest.m_Length = dot;
        *name = ISCreate(rest);
        return S_OK;
    }

    int32_t Load() override
    {
        if (CREFString(m_Filename.get()).IsEmpty())
            return E_FAIL;
        // The object's own Load may rename it; the file it came from keeps the name.
        auto copy = SmartPtr<IString>::Adopt(ISCreate(CREFString(m_Filename.get())));
        int32_t result = E_FAIL;
        wchar_t form = Form();
        if (form == L'x')
            result = LoadXML(0);
        if (form == L't')
            result = LoadFolderStream();
        // Even a failed load leaves the object counting as its file's, unchanged.
        m_Filename = copy;
        m_HasFile = 1;
        m_Modified = 0;
        return result;
    }

    int32_t Save() override
    {
        int32_t result = E_FAIL;
        wchar_t form = Form();
        if (form == L'x')
            result = SaveXML(nullptr, 0);
        if (form == L't')
            result = SaveFolderStream();
        if (result >= 0) {
            m_Modified = 0;
            m_HasFile = 1;
        }
        return result;
    }

    int32_t Control(int code, int value) override
    {
        int32_t* flag = Flag(code);
        if (!flag)
            return E_INVALIDARG;
        *flag = value;
        return S_OK;
    }

    int32_t Inquire(int code, int* value) override
    {
        int32_t* flag = Flag(code);
        if (!flag)
            return E_INVALIDARG;
        int32_t result = S_OK;
        if (code == ARCHIVE_MODIFIED || code == ARCHIVE_HASFILE)
            result = ARCHIVE_FLAG_STATE;
        if (code == ARCHIVE_ENCODING) {
            // No encoding chosen yet: the caller learns nothing.
            if (m_Encoding < 0)
                return E_INVALIDARG;
            result = ARCHIVE_ENCODING_STATE;
        }
        if (value)
            *value = *flag;
        return result;
    }

    int32_t Unload() override { return E_NOTIMPL; }

    int32_t SaveFolderStream() override
    {
        auto stream = Make<IFolderStream>(REFLiteral(L"FolderStream"));
        if (!stream)
            return E_FAIL;
        SmartPtr<IUnknown> self = Self();
        // Who wrote the file and when goes first, under "Info".
        auto info = QueryAs<IFileInfo>(self.get());
        if (!info)
            info = Make<IFileInfo>(REFLiteral(L"FileInfo"));
        if (info) {
            auto infoKey = SmartPtr<IString>::Adopt(ISCreate(L"Info"));
            stream->WriteObject(infoKey, info, 0);
        }
        // The body is filed under the name of the object's component.
        auto record = Make<IComponentString>(REFLiteral(L"ComponentString"));
        SmartPtr<IString> component;
        if (record) {
            record->put_Object(self);
            record->get_Field(COMPONENT_FIELD_NAME, component.Receive());
        }
        stream->WriteObject(component, self, 0);
        if (auto archive = stream.template As<IFileArchive>()) {
            archive->put_Filename(m_Filename);
            archive->Save();
        }
        return S_OK;
    }

    int32_t LoadFolderStream() override
    {
        auto stream = Make<IFolderStream>(REFLiteral(L"FolderStream"));
        if (!stream)
            return E_FAIL;
        int32_t result = E_FAIL;
        SmartPtr<IString> copy;
        if (auto archive = stream.template As<IFileArchive>()) {
            archive->put_Filename(m_Filename);
            copy.Attach(ISCreate(CREFString(m_Filename.get())));
            result = archive->Load();
        }
        SmartPtr<IUnknown> self = Self();
        // The stream fills this very object, not a new one of its class.
        tagREFString objectName{0, nullptr};
        if (auto objectInfo = QueryAs<IObjectInfo>(self.get()))
            objectInfo->GetName(0, &objectName);
        auto key = SmartPtr<IString>::Adopt(ISCreate(objectName));
        ReadInPlace(stream, key, self);
        if (copy)
            m_Filename = copy;
        if (auto info = QueryAs<IFileInfo>(self.get())) {
            auto infoKey = SmartPtr<IString>::Adopt(ISCreate(L"Info"));
            ReadInPlace(stream, infoKey, SmartPtr<IUnknown>(info.get()));
        }
        return result;
    }

    int32_t LoadXML(int extended)
    {
        CREFString file(m_Filename.get());
        if (file.IsEmpty())
            return E_FAIL;
        auto stream = Make<IXMLStream>(extended ? REFLiteral(L"XMLStreamEx") : REFLiteral(L"XMLStream"));
        if (!stream)
            return E_FAIL;
        void* buffer = nullptr;
        unsigned long length = 0;
        int32_t result = FileArchiveLoad(file, &buffer, &length, FILELOAD_TEXT, 0);
        if (result < 0)
            return result;
        stream->SetBuffer(buffer, int(length * 4), 0);
        // Drops the XML declaration and the style-sheet instruction, where present.
        for (int i = 0; i < 2; ++i) {
            tagREFString name{0, nullptr};
            if (stream->NextAttribute(&name) >= 0 && CREFString(name).At(0) == L'?')
                stream->Skip(name.m_Length * 4, 1, 0);
        }
        // The root element's name isn't checked: the object reads what it finds.
        if (auto persist = QueryAs<IDataPersist>(static_cast<Base*>(this))) {
            tagREFString root{0, nullptr};
            tagREFString value{0, nullptr};
            SmartPtr<IUnknown> element;
            stream->NextAttribute(&root);
            stream->GetAttribute(root, &value, element.Receive(), 1);
            persist->Load(QueryAs<IDataStream>(element.get()), COLLECTION_LOAD_CLEAR);
        }
        delete[] static_cast<wchar_t*>(buffer);
        return S_OK;
    }

    int32_t SaveXML(IString* stylesheet, int flags)
    {
        auto stream = Make<IXMLStreamEx>(REFLiteral(L"XMLStreamEx"));
        if (!stream)
            return E_FAIL;
        if (flags & ARCHIVE_SAVE_MODE)
            stream->put_Mode(-1, flags);
        stream->SetBuffer(nullptr, 0, 0);
        CREFString sheet(stylesheet);
        if (sheet.IsEmpty())
            sheet = CREFString(L"generic.xsl");
        WriteText(stream, REFLiteral(L"<?xml version=\"1.0\"?>"));
        WriteText(stream, REFLiteral(L"\r\n"));
        WriteText(stream, REFLiteral(L"<?xml-stylesheet href=\""));
        WriteText(stream, sheet);
        WriteText(stream, REFLiteral(L"\" type=\"text/xsl\"?>"));
        WriteText(stream, REFLiteral(L"\r\n"));
        if (auto persist = QueryAs<IDataPersist>(static_cast<Base*>(this))) {
            stream->OpenObject(persist, 0, 0);
            persist->Save(stream, 0);
            stream->CloseElement();
        }
        CREFString file(m_Filename.get());
        if (m_Encoding > 0) {
            // A chosen encoding: the text goes out as bytes, and the write's own
            // result is not reported: such a save answers S_OK even when the file
            // could not be written (the old file stays whole, since the write goes
            // beside it first).
            auto transform = Make<IStreamTransform>(REFLiteral(L"ASCIIStream"));
            auto bytes = Make<IDataStream>(REFLiteral(L"DataStream"));
            if (!transform || !bytes)
                return E_FAIL;
            transform->Transform(stream, bytes, 0);
            void* data = nullptr;
            unsigned long size = 0;
            bytes->GetBuffer(&data, &size);
            FileArchiveSave(file, static_cast<unsigned char*>(data), size, 0, 0);
            return S_OK;
        }
        void* text = nullptr;
        unsigned long size = 0;
        stream->GetBuffer(&text, &size);
        return FileArchiveSave(file, static_cast<unsigned char*>(text), size, 1, 0);
    }

protected:
    SmartPtr<IString> m_Filename;
    int32_t m_Modified = 0;
    int32_t m_HasFile = 0;
    int32_t m_NameWithFolder = 0;
    SmartPtr<IString> m_Filter;
    int32_t m_Property3 = 0;
    int32_t m_Encoding = -1;

    // A new object of a framework component, as I; empty if it can't be had.
    template <class I> static SmartPtr<I> Make(tagREFString component)
    {
        IID iid = I::Iid();
        return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(component, &iid))));
    }

private:
    SmartPtr<IUnknown> Self() { return QueryAs<IUnknown>(static_cast<Base*>(this)); }

    static int32_t Hand(const SmartPtr<IString>& field, IString** out)
    {
        if (!out)
            return E_POINTER;
        *out = field.Copy();
        return *out ? S_OK : E_FAIL;
    }

    int32_t* Flag(int code)
    {
        switch (code) {
        case ARCHIVE_MODIFIED:
            return &m_Modified;
        case ARCHIVE_HASFILE:
            return &m_HasFile;
        case ARCHIVE_NAMEWITHFOLDER:
            return &m_NameWithFolder;
        case ARCHIVE_PROPERTY3:
            return &m_Property3;
        case ARCHIVE_ENCODING:
            return &m_Encoding;
        default:
            return nullptr;
        }
    }

    // The index of the last mark ahead of end, or -1.
    static int32_t LastOf(const CREFString& text, wchar_t mark, int32_t end)
    {
        for (int32_t i = end - 1; i >= 0; --i)
            if (text.At(i) == mark)
                return i;
        return -1;
    }

    // The lower-case first letter of the extension, which alone picks the form; the
    // whole name counts as the extension when no dot stands behind its first character.
    wchar_t Form() const
    {
        CREFString file(m_Filename.get());
        int32_t dot = LastOf(file, L'.', file.m_Length);
        wchar_t first = dot > 0 ? file.At(dot + 1) : file.At(0);
        return wchar_t(std::towlower(wint_t(first)));
    }

    // The installation's folder, "/" and rest, with every "\" turned into "/".
    static SmartPtr<IString> BelowInstallation(CREFString rest)
    {
        SmartPtr<IString> install;
        FILENAMEGetInstallPath(install.Receive());
        CREFString root(install.get());
        std::wstring path(root.m_Buffer ? root.m_Buffer : L"", size_t(root.m_Length > 0 ? root.m_Length : 0));
        path += L'/';
        path.append(rest.m_Buffer, size_t(rest.m_Length));
        for (wchar_t& c : path)
            if (c == L'\\')
                c = L'/';
        CREFString text(path.data(), int32_t(path.size()));
        if (auto writable = install.template As<ICreatableString>()) {
            writable->Clone(text);
            return install;
        }
        return SmartPtr<IString>::Adopt(ISCreate(text));
    }

    static void WriteText(IDataStream* stream, tagREFString text)
    {
        stream->Write(text.m_Buffer, text.m_Length * 4, 0);
    }

    // Reads the named object of the stream into target itself.
    static void ReadInPlace(IFolderStream* stream, IString* key, const SmartPtr<IUnknown>& target)
    {
        IUnknown* object = target.get();
        stream->ReadObject(key, &object, 0);
        // A stream that handed out another object after all gave it with a reference.
        if (object && object != target.get())
            object->Release();
    }
};
