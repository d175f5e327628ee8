// One Bible translation: a named collection of its books, with the translation's
// name, abbreviation and language. It comes from a folder of book files, a packed
// ".tBL" file or an XML file, and it cuts an HTML Bible into book files.
#pragma once
#include "persistence/FileArchiveImpl.h"
#include "persistence/NamedCollection.h"
#include "persistence/PropInterrogate.h"
#include "runtime/EventSource.h"
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

// What Find is asked to do.
constexpr int BIBLEFIND_CONTENTS = 1;
constexpr int BIBLEFIND_REFINE = 0x100;
constexpr int BIBLEFIND_QUIET = 0x400;

// The Bible's own menu, by code.
constexpr int BIBLEVERB_EDIT = 3;
constexpr int BIBLEVERB_COMPRESS = 101;
constexpr int BIBLEVERB_UNCOMPRESS = 102;

class CVXBible : public CObject<CVXBible>,
                 public IObjectInfoImpl<CVXBible>,
                 public IUIManager,
                 public IVXSearch,
                 public IDataPersist,
                 public IParent,
                 public INamedCollectionImpl<CVXBible, ISuperCollection, IVXBook>,
                 public IFileArchiveImpl<CVXBible, IFileArchive>,
                 public IUIPropInterrogateImpl<CVXBible, IUIPropInterrogateEx, 10>,
                 public IUIPropertyPageSpecify,
                 public IUIVerbCollectionSpecify,
                 public IUIDropSource,
                 public IUIDropTarget,
                 public _IUIContainerEvents,
                 public IEventSourceImpl<CVXBible, &IID_IUnknown>,
                 public _FIREUIRefreshEvents<CVXBible>,
                 public _FIREUIContainerEvents<CVXBible> {
public:
    static constexpr wchar_t kObjectName[] = L"VXBible";
    using Collection = INamedCollectionImpl<CVXBible, ISuperCollection, IVXBook>;
    using Archive = IFileArchiveImpl<CVXBible, IFileArchive>;
    using Properties = IUIPropInterrogateImpl<CVXBible, IUIPropInterrogateEx, 10>;
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IDataPersist>, Entry<IEventSource>, Entry<IVXSearch>,
                              Entry<IParent>, Chain<Collection>, Entry<IUIManager>, Chain<Properties>,
                              Entry<IUIVerbCollectionSpecify>, Chain<Archive>, Entry<IUIDropSource>,
                              Entry<IUIDropTarget>, Entry<IUIPropertyPageSpecify>, Entry<_IUIContainerEvents>>;
    using Collection::Remove;

    CVXBible();
    int32_t FinalConstruct() override;
    void FinalRelease() override;

    // IUIManager: the tree that shows this Bible, and the keys that walk it.
    int32_t get_UserInterface(IUINodeContainer** tree) override;
    int32_t put_UserInterface(IUINodeContainer* tree) override;
    int32_t Refresh(int what) override;
    int32_t GetSelected(IUnknown** selected) override;
    int32_t Select(int a, int b, int c) override;
    int32_t MoveUp() override;
    int32_t MoveDown() override;
    int32_t MoveLeft() override;
    int32_t MoveRight() override;
    int32_t PageUp() override;
    int32_t PageDown() override;
    int32_t Remove() override;
    int32_t RemoveAll() override;
    int32_t MoveNext() override;
    int32_t MovePrevious() override;

    // _IUIContainerEvents: what the tree reports.
    int32_t NodeSelect(IUnknown* source, int action, int row, int flags, IUnknown* node) override;
    int32_t NodeDrag(IUnknown* source, int a, int b, int c, IUnknown* node) override;
    int32_t NodeChanged(IUnknown* source, IUnknown* node) override;

    // IVXSearch: a typed reference, or a phrase in every verse.
    int32_t Find(IString* text, int flags, IUnknown** result) override;

    int32_t Clear() override;
    int32_t VerifyInterface(IUnknown* item, IVXBook** verified) override;

    // A new abbreviation reaches every book.
    int32_t ControlEx(int id, IUnknown* value) override;

    // IUIPropertyPageSpecify
    int32_t GetPages(int mode, INamedCollection** pages, IUnknown** context) override;
    // IUIDropSource, IUIDropTarget: a Bible gives verses and takes nothing in.
    int32_t GetDropObject(IUnknown** object, double x, double y, CANVASRect* rect) override;
    int32_t DragDrop(IUnknown* object, int a, int b, double x, double y, CANVASRect* rect) override;
    // IUIVerbCollectionSpecify
    int32_t GetVerbs(int a, IUnknown* context, IUIVerbCollection** verbs) override;
    int32_t DoAction(int code, IUnknown* context) override;

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

    // The searcher's steps. SearchTitles gives the verse count of the reference in
    // text, 0 when no title matches; row and item are set only on a match.
    int32_t SearchTitles(ISuperCollection* titles, IString* text, int* row, IUnknown** item);
    void SearchContents(ISuperCollection* books, IString* text, ISuperCollection* results);
    void SearchSearch(ISuperCollection* previous, CREFString text, ISuperCollection* results);

    SmartPtr<IUINodeContainer> m_UserInterface;
    SmartPtr<ISuperCollection> m_SearchResults;
    SmartPtr<IUnknown> m_Parent;
    SmartPtr<IString> m_Translation;
    SmartPtr<IString> m_Abbreviation;
    SmartPtr<IString> m_Language;
    SmartPtr<IUnknown> m_LastNode;
    int32_t m_SearchMode = 0;
    int32_t m_Compressed = 0;

private:
    // A message window that names the file being read; it stays up while it is held.
    SmartPtr<IMessageWindow> ShowLoading();
    // A book read from the folder at `path`, named `name`; null if none can be made.
    SmartPtr<IVXBook> FolderBook(IString* path, IString* name);
    // The reference search: one line selects, a list also gives the passages' text.
    int32_t FindReference(CREFString text, bool list, int flags, IUnknown** result);
    int32_t FindContents(CREFString text, int flags, IUnknown** result);
    // The tree, when it is one; the frame that shows the caption, if there is one.
    SmartPtr<IUITree> Tree();
    SmartPtr<IUIManagerCollection> Manager();
    // The keys: a verse up (-1) or down (1), a chapter up or down.
    int32_t StepVerse(int step);
    int32_t StepPage(int step);
    // Opens the verse's book and chapter in the tree, selects it and tells of it.
    int32_t ShowVerse(IUITree* tree, IVXBook* book, int chapter, int verse, IString* text);
    // What the verbs "Edit" and "UnCompress" do.
    int32_t ShowProperties();
    void UnCompress();
};

// The form of a file name for loading and saving: the text behind its last ".",
// or the whole name when there is none or it stands first.
CREFString BibleExtension(IString* filename);
