// Persistence streams and the objects that live in them.
#pragma once
#include "runtime/interfaces/Collections.h"

// The common face of every persistence stream. IDataPersist::Save and Load receive
// one and ask it for IXMLStream or IFolderStream to learn which form is wanted.
struct IDataStream : IUnknown {
    static const IID& Iid() { return IID_IDataStream; }
    // null, 0, 0 starts an empty buffer for writing.
    virtual int32_t SetBuffer(void* data, int bytes, int mode) = 0;
    virtual int32_t Skip(int bytes, int mode, int reserved) = 0;
    virtual int32_t GetBuffer(void** data, unsigned long* size) = 0;
    virtual int32_t Write(const void* data, int size, int reserved) = 0;
};

struct IDataPersist : IUnknown {
    static const IID& Iid() { return IID_IDataPersist; }
    virtual int32_t Save(IDataStream* stream, int flags) = 0;
    virtual int32_t Load(IDataStream* stream, int flags) = 0;
};

struct IXMLStream : IDataStream {
    static const IID& Iid() { return IID_IXMLStream; }
    // Rewinds the current element's values before a GetAttribute of one known name.
    virtual int32_t ResetAttributes(int a, int b, int c) = 0;
    virtual int32_t OpenElement(IString* name, int a, int b) = 0;
    // Opens the element of an object, named by its IObjectInfo; its Save then fills it.
    virtual int32_t OpenObject(IUnknown* persist, int a, int b) = 0;
    // Writes <name>value</name> under the open element.
    virtual int32_t PutAttribute(IString* name, int a, IString* value, int b) = 0;
    virtual int32_t CloseElement() = 0;
    // Steps to the next value or child of the current element; negative at the end.
    virtual int32_t NextAttribute(tagREFString* name) = 0;
    // A value object that answers IString with the element's text and serves as a
    // sub-stream; negative if missing.
    virtual int32_t GetAttribute(tagREFString name, tagREFString* value, IUnknown** element, int mode) = 0;
    virtual int32_t ReadObject(IUnknown** object) = 0;
    virtual int32_t ReadObjectOfClass(tagREFString className, IUnknown** object) = 0;
    virtual int32_t put_Mode(int mask, int flags) = 0;
};

struct IXMLStreamEx : IXMLStream {
    static const IID& Iid() { return IID_IXMLStreamEx; }
};

struct IXMLFile : IUnknown {
    static const IID& Iid() { return IID_IXMLFile; }
    // The stream of what the file held, after its IFileArchive::Load.
    virtual int32_t get_Stream(IXMLStream** stream) = 0;
};

struct IFolderStream : IDataStream {
    static const IID& Iid() { return IID_IFolderStream; }
    virtual int32_t CreateFolder(IString* name, int mode, IDataStream** out) = 0;
    virtual int32_t CreateBlock(IString* name) = 0;
    virtual int32_t WriteData(IString* name, const void* data, int size, int reserved) = 0;
    virtual int32_t WriteString(IString* name, IUnknown* value) = 0;
    virtual int32_t WriteObject(IString* name, IUnknown* object, int flags) = 0;
    virtual int32_t OpenBlock(IString* name) = 0;
    virtual int32_t ReadData(IString* name, void* data, int size, int reserved) = 0;
    virtual int32_t ReadString(IString* name, IUnknown* value) = 0;
    // By name with an IString key, by position with a variant that holds a number.
    virtual int32_t OpenFolder(IUnknown* key, int mode, IDataStream** out) = 0;
    // A non-null *object is loaded in place; otherwise one is made from the stream.
    virtual int32_t ReadObject(IString* name, IUnknown** object, int flags) = 0;
};

struct IStreamTransform : IUnknown {
    static const IID& Iid() { return IID_IStreamTransform; }
    virtual int32_t Transform(IUnknown* in, IUnknown* out, int mode) = 0;
};

// Control and Inquire codes of a file archive.
constexpr int ARCHIVE_MODIFIED = 0;
constexpr int ARCHIVE_HASFILE = 1;
constexpr int ARCHIVE_NAMEWITHFOLDER = 2;
constexpr int ARCHIVE_PROPERTY3 = 3;
constexpr int ARCHIVE_ENCODING = 4;
// A folder stream deflates its items when saved (the "Compress" verb); otherwise it stores them.
constexpr int ARCHIVE_COMPRESS = 16;

struct IFileArchive : IUnknown {
    static const IID& Iid() { return IID_IFileArchive; }
    virtual int32_t get_Filename(IString** name) = 0;
    virtual int32_t put_Filename(IString* name) = 0;
    virtual int32_t get_Filter(IString** filter, short index) = 0;
    virtual int32_t get_Name(IString** name) = 0;
    virtual int32_t Load() = 0;
    virtual int32_t Save() = 0;
    virtual int32_t Control(int code, int value) = 0;
    virtual int32_t Inquire(int code, int* value) = 0;
    virtual int32_t Unload() = 0;
    virtual int32_t SaveFolderStream() = 0;
    virtual int32_t LoadFolderStream() = 0;
};

// Who wrote a file, and when; kept under the key "Info" of a folder file.
struct IFileInfo : IUnknown {
    static const IID& Iid() { return IID_IFileInfo; }
    virtual int32_t get_Author(IString** author) = 0;
    virtual int32_t put_Author(tagREFString author) = 0;
    // Seconds since 1970.
    virtual int32_t get_Time(int64_t* seconds) = 0;
    virtual int32_t put_Time(int64_t seconds) = 0;
};

// A stream of comma-separated values; the line goes out through IDataStream::Write.
struct ICSVStream : IDataStream {
    static const IID& Iid() { return IID_ICSVStream; }
};
