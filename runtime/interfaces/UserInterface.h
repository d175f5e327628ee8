// User interface: editor, buttons, property pages, tree, verbs, windows, clipboard.
#pragma once
#include "runtime/interfaces/Drawing.h"

// Publishes an object's fields by number.
struct IUIPropInterrogate : IUnknown {
    static const IID& Iid() { return IID_IUIPropInterrogate; }
    virtual int32_t Inquire(int id, int* value) = 0;
    virtual int32_t Control(int id, int value) = 0;
    virtual int32_t ParameterRange(int id, int* low, int* high) = 0;
    virtual int32_t ParameterEnumeration(int id, IUnknown** enumeration) = 0;
};

struct IUIPropInterrogateEx : IUIPropInterrogate {
    static const IID& Iid() { return IID_IUIPropInterrogateEx; }
    virtual int32_t InquireEx(int id, IUnknown** value) = 0;
    virtual int32_t ControlEx(int id, IUnknown* value) = 0;
    virtual int32_t UIPropInterrogate_SaveFolderStream(INamedCollection* names, IFolderStream* stream, int flags) = 0;
    virtual int32_t UIPropInterrogate_LoadFolderStream(IFolderStream* stream, int flags) = 0;
    virtual int32_t UIPropInterrogate_SaveXML(INamedCollection* names, IDataStream* stream, int flags) = 0;
    virtual int32_t UIPropInterrogate_LoadXML(INamedCollection* names, IDataStream* stream, int flags) = 0;
};

struct IUITextEdit : IUnknown {
    static const IID& Iid() { return IID_IUITextEdit; }
    // A song (read by the editor itself), a string, or null for empty.
    virtual int32_t put_Content(IUnknown* content) = 0;
    // 0: the whole text as IString; 1: a collection of the lines.
    virtual int32_t get_Content(int what, IUnknown** out) = 0;
    // "html" or "script".
    virtual int32_t put_Format(IString* format) = 0;
};

struct IButton : IUnknown {
    static const IID& Iid() { return IID_IButton; }
    virtual int32_t Press() = 0;
    virtual int32_t Unpress() = 0;
    virtual int32_t SetSize(double width, double height) = 0;
    virtual int32_t SetPosition(double x, double y) = 0;
    virtual int32_t put_Caption(tagREFString text) = 0;
    virtual int32_t put_Tooltip(tagREFString text) = 0;
    virtual int32_t Control(int code, int value) = 0;
    virtual int32_t Inquire(int code, int* value) = 0;
    virtual int32_t CopyLook(IUnknown* model, int mode) = 0;
};

struct IButtonCollection : IUnknown {
    static const IID& Iid() { return IID_IButtonCollection; }
    virtual int32_t Add(IUnknown* button) = 0;
    virtual int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect) = 0;
    virtual int32_t GetButton(int id, IButton** out) = 0;
    virtual int32_t Control(int code, int value) = 0;
    // 0 when the event hit the strip, non-zero otherwise.
    virtual int32_t Pointer(int button, int phase, int flags, double x, double y, CANVASRect* rect, IUnknown** hit,
                            int reserved) = 0;
};

struct IUIUtils : IUnknown {
    static const IID& Iid() { return IID_IUIUtils; }
    virtual int32_t ShowPropertyFrame(IString* title, IUnknown* owner, int a, IUnknown* pages, IUnknown** frame, int b,
                                      int c) = 0;
    virtual int32_t ShowFileArchive(IUnknown* archive, int a, int b, int c, int d, int e, int f) = 0;
};

struct IUIPropertyPageCollection : IUnknown {
    static const IID& Iid() { return IID_IUIPropertyPageCollection; }
    virtual int32_t put_Pages(IUnknown* pageNames, int mode) = 0;
    virtual int32_t put_Object(IUnknown* object, int flags) = 0;
    virtual int32_t get_Objects(ISimpleCollection** out) = 0;
    virtual int32_t SetFlags(int flags) = 0;
    virtual int32_t get_PageValue(int code, IUnknown** object, int* value) = 0;
};

struct IUIPropertyFrame : IUnknown {
    static const IID& Iid() { return IID_IUIPropertyFrame; }
    virtual int32_t Show(int a, int b) = 0;
};

struct IUIPropertyPageSpecify : IUnknown {
    static const IID& Iid() { return IID_IUIPropertyPageSpecify; }
    virtual int32_t GetPages(int mode, INamedCollection** pages, IUnknown** context) = 0;
};

struct IUIPropertyPage : IUnknown {
    static const IID& Iid() { return IID_IUIPropertyPage; }
    virtual int32_t Initialize(ISimpleCollection* objects, IUnknown* frame, int mode, IUnknown* context) = 0;
    virtual int32_t GetState() = 0;
    virtual int32_t GetHelp(IUnknown** help) = 0;
    virtual int32_t Apply(IUnknown* object) = 0;
    virtual int32_t Close() = 0;
    virtual int32_t Cancel() = 0;
    virtual int32_t GetTitle(IString** title) = 0;
};

struct IUITree : IUnknown {
    static const IID& Iid() { return IID_IUITree; }
    virtual int32_t SetOption(int code, int value) = 0;
    virtual int32_t get_Root(IUnknown** root) = 0;
    virtual int32_t put_Root(IUnknown* root) = 0;
    virtual int32_t Reset() = 0;
    virtual int32_t Expand(IUnknown* collection, int index) = 0;
    // mode 5: the caller reports the selection; mode 7: the tree does.
    virtual int32_t SelectRow(int row, int mode) = 0;
    virtual int32_t GetSelection(int a, int b, IUnknown** active) = 0;
};

struct IUINodeContainer : IUnknown {
    static const IID& Iid() { return IID_IUINodeContainer; }
    virtual int32_t Detach() = 0;
};

struct IUIManagerCollection : IUnknown {
    static const IID& Iid() { return IID_IUIManagerCollection; }
    virtual int32_t SetCaption(IString* text, int a, int b) = 0;
};

struct IUIVerb : IUnknown {
    static const IID& Iid() { return IID_IUIVerb; }
    virtual int32_t Control(int code, int value) = 0;
};

struct IUIVerbCollection : IUnknown {
    static const IID& Iid() { return IID_IUIVerbCollection; }
    virtual int32_t get_Item(int index, IUnknown** verb) = 0;
    virtual int32_t get_Index(int code) = 0;
    virtual int32_t Add(int a, IString* name, int b, int c, int code, int d) = 0;
};

struct IWindowCollection : IUnknown {
    static const IID& Iid() { return IID_IWindowCollection; }
    virtual int32_t get_Item(int index, IUnknown** out) = 0;
    virtual int32_t FindWindow(IString* name, int* index) = 0;
    virtual int32_t RemoveWindow(int index) = 0;
};

struct IHostWindow : IUnknown {
    static const IID& Iid() { return IID_IHostWindow; }
    // 0 closes.
    virtual int32_t Show(int mode) = 0;
};

struct IUIDropSource : IUnknown {
    static const IID& Iid() { return IID_IUIDropSource; }
    virtual int32_t GetDropObject(IUnknown** object, double x, double y, CANVASRect* rect) = 0;
};

struct IWorkspace : IUnknown {
    static const IID& Iid() { return IID_IWorkspace; }
    virtual int32_t BeginDrag(IUIDropSource* source, int a, int b, IUnknown* node) = 0;
};

struct IMessageWindow : IUnknown {
    static const IID& Iid() { return IID_IMessageWindow; }
    // Shows the text while the object lives.
    virtual int32_t Show(IString* text) = 0;
};

struct IClipboard : IUnknown {
    static const IID& Iid() { return IID_IClipboard; }
    // The clipboard's text: (IID_IString, 0, out).
    virtual int32_t GetData(const IID& iid, int mode, IUnknown** out) = 0;
};

// Takes what is dropped on it.
struct IUIDropTarget : IUnknown {
    static const IID& Iid() { return IID_IUIDropTarget; }
    virtual int32_t DragDrop(IUnknown* object, int a, int b, double x, double y, CANVASRect* rect) = 0;
};

// The manager of a tree: it ties itself to the tree, and walks its rows for the keys.
struct IUIManager : IUnknown {
    static const IID& Iid() { return IID_IUIManager; }
    virtual int32_t get_UserInterface(IUINodeContainer** tree) = 0;
    virtual int32_t put_UserInterface(IUINodeContainer* tree) = 0;
    virtual int32_t Refresh(int what) = 0;
    virtual int32_t GetSelected(IUnknown** selected) = 0;
    virtual int32_t Select(int a, int b, int c) = 0;
    virtual int32_t MoveUp() = 0;
    virtual int32_t MoveDown() = 0;
    virtual int32_t MoveLeft() = 0;
    virtual int32_t MoveRight() = 0;
    virtual int32_t PageUp() = 0;
    virtual int32_t PageDown() = 0;
    virtual int32_t Remove() = 0;
    virtual int32_t RemoveAll() = 0;
    virtual int32_t MoveNext() = 0;
    virtual int32_t MovePrevious() = 0;
};

// The verbs an object offers in its menu, and what each does.
struct IUIVerbCollectionSpecify : IUnknown {
    static const IID& Iid() { return IID_IUIVerbCollectionSpecify; }
    virtual int32_t GetVerbs(int a, IUnknown* context, IUIVerbCollection** verbs) = 0;
    virtual int32_t DoAction(int code, IUnknown* context) = 0;
};

// The rows of a tree as a person sees them, for a host that shows the tree and
// clicks in it: the stand-in tree answers it beside IUITree.
struct IUITreeView : IUnknown {
    static const IID& Iid() { return IID_IUITreeView; }
    virtual int32_t get_RowCount(int* count) = 0;
    // The row's label, its depth (0 at the top) and the item it shows.
    virtual int32_t get_Row(int row, IString** label, int* depth, IUnknown** node) = 0;
    // Opens the row, as a click on its box does.
    virtual int32_t ExpandRow(int row) = 0;
};

// Codes of a verb's Control and Inquire (IUIVerb, and its IUIPropInterrogate).
constexpr int UIVERB_CODE = 1;
constexpr int UIVERB_DISABLED = 4;

// Codes of the stand-in dialogs' IUIPropInterrogate: how every dialog of the process
// answers (UIDIALOG_OK or UIDIALOG_CANCEL), and how many have been shown.
constexpr int UIUTILS_ANSWER = 1;
constexpr int UIUTILS_SHOWN = 2;
constexpr int UIDIALOG_CANCEL = 0;
constexpr int UIDIALOG_OK = 1;

// Codes of the stand-in property page collection's IUIPropInterrogate: the flags of
// SetFlags, of put_Object and of put_Pages as last given, and the page values that
// get_PageValue reads (PAGES_STRIPHEIGHT, 22 until set).
constexpr int PAGES_FLAGS = 1;
constexpr int PAGES_OBJECTFLAGS = 2;
constexpr int PAGES_PAGESMODE = 3;
constexpr int PAGES_STRIPHEIGHT = 6;
