// One Bible translation: a named collection of its books, with the translation's
// name, abbreviation and language. It comes from a folder of book files, a packed
// ".tBL" file or an XML file, and it cuts an HTML Bible into book files.
#pragma once
#include "persistence/FileArchiveImpl.h"
#include "persistence/NamedCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

// The translation's properties, by number.
constexpr int BIBLE_PROP_TRANSLATION = 1;
constexpr int BIBLE_PROP_ABBREVIATION = 2;
constexpr int BIBLE_PROP_LANGUAGE = 3;

// The names of the books in the order of their numbers: row i - 1 is book i.
constexpr int BIBLE_BOOK_COUNT = 66;
constexpr int BIBLE_BOOK_NAME_SIZE = 256;
extern const wchar_t BIBLEBOOKS[BIBLE_BOOK_COUNT][BIBLE_BOOK_NAME_SIZE];

class CVXBible : public CObject<CVXBible>,
                 public IObjectInfoImpl<CVXBible>,
                 public IDataPersist,
                 public IParent,
                 public INamedCollectionImpl<CVXBible, ISuperCollection, IVXBook>,
                 public IFileArchiveImpl<CVXBible, IFileArchive> {
public:
    static constexpr wchar_t kObjectName[] = L"VXBible";
    using Collection = INamedCollectionImpl<CVXBible, ISuperCollection, IVXBook>;
    using Archive = IFileArchiveImpl<CVXBible, IFileArchive>;
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IDataPersist>, Entry<IParent>, Chain<Collection>,
                              Chain<Archive>>;

    CVXBible();
    int32_t FinalConstruct() override;
    void FinalRelease() override;

    int32_t Clear() override;
    int32_t VerifyInterface(IUnknown* item, IVXBook** verified) override;

    // IDataPersist: the packed form with the flag 0x80000, else a reference to the file.
    int32_t Save(IDataStream* stream, int flags) override;
    int32_t Load(IDataStream* stream, int flags) override;

    // IParent
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;

    // IFileArchive: the form is chosen by the file name's extension.
    int32_t Load() override;
    int32_t Save() override;
    // The folder form: one book file for each book, named in "bible.ini" or by the table.
    int32_t Load(IString* folder);

    // The books of an XML Bible, from the file's parameters.
    int32_t ReadXMLParamters(IParameters* parameters);
    // Cuts an HTML Bible into book files; the Bible itself stays empty.
    int32_t Readxml(IXMLStream* stream);

    SmartPtr<IUnknown> m_UserInterface;
    SmartPtr<IUnknown> m_Parent;
    SmartPtr<IString> m_Translation;
    SmartPtr<IString> m_Abbreviation;
    SmartPtr<IString> m_Language;
    int32_t m_Compressed = 0;

private:
    // A message window that names the file being read; it stays up while it is held.
    SmartPtr<IMessageWindow> ShowLoading();
    // A book read from the folder at `path`, named `name`; null if none can be made.
    SmartPtr<IVXBook> FolderBook(IString* path, IString* name);
};

// The form of a file name for loading and saving: the text behind its last ".",
// or the whole name when there is none or it stands first.
CREFString BibleExtension(IString* filename);
