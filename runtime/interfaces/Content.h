// Content: books, songs, verses, text references, search.
#pragma once
#include "runtime/interfaces/Drawing.h"
#include "runtime/interfaces/Parameters.h"

// A verse count that reaches through the end of the chapter.
constexpr int BIBLE_VERSES_TO_END = 5000;
// Header asks for the short form with this chapter.
constexpr int HEADER_SHORT = -2;

struct IVXBook : IUnknown {
    static const IID& Iid() { return IID_IVXBook; }
    virtual int32_t get_ChapterCount(int* count) = 0;
    virtual int32_t get_VerseCount(int chapter, int* count) = 0;
    virtual int32_t get_Verse(int chapter, int verse, int count, IString** out) = 0;
    virtual int32_t Header(IString** out, int chapter, int verse, int count, IUnknown* context) = 0;
    virtual int32_t Footer(IString** out, int chapter, int verse, int count, IUnknown* context) = 0;
};

struct IVXBookEx : IUnknown {
    static const IID& Iid() { return IID_IVXBookEx; }
    virtual int32_t Load(IParameters* content) = 0;
};

struct IVXSearch : IUnknown {
    static const IID& Iid() { return IID_IVXSearch; }
    virtual int32_t Find(IString* text, int flags, IUnknown** result) = 0;
};

// GetText flags.
constexpr short SONGTEXT_VERSES = 1;
constexpr short SONGTEXT_VERSETAGS = 2;
constexpr short SONGTEXT_HEADER = 4;
// SetVerses modes.
constexpr short SONGVERSES_PARSE = 0;
constexpr short SONGVERSES_CCLI = 1;

struct IVXSong : IUnknown {
    static const IID& Iid() { return IID_IVXSong; }
    virtual int32_t Arrange(int lines, int characters) = 0;
    virtual int32_t SetVerses(tagREFString text, short mode) = 0;
    virtual int32_t GetText(IString** out, short flags) = 0;
};

// Verse property codes (Inquire and Control).
constexpr int VERSE_NUMBER = 1;
constexpr int VERSE_SHOWTITLE = 11;
constexpr int VERSE_SHOWVERSENAME = 12;
constexpr int VERSE_HEADERDISPLAY = 19;
constexpr int VERSE_PROP20 = 20;
constexpr int VERSE_SHOWFOOTTITLE = 21;
constexpr int VERSE_SHOWCOPYRIGHT = 23;
constexpr int VERSE_SHOWAUTHOR = 24;
constexpr int VERSE_SHOWCCLI = 25;
constexpr int VERSE_FOOTERDISPLAY = 29;
constexpr int VERSE_PROPERTYCOUNT = 0x2000000;

// When a header or footer shows.
constexpr int DISPLAY_NEVER = 0;
constexpr int DISPLAY_FIRST = 1;
constexpr int DISPLAY_LAST = 2;
constexpr int DISPLAY_ALL = 3;

// Its first two operations agree with IVXText's, and so with IString's.
struct IVXSongVerse : IVXText {
    static const IID& Iid() { return IID_IVXSongVerse; }
    virtual int32_t put_String(IString* text) = 0;
    virtual int32_t get_HeaderStyle(IVXRenderStyle** style) = 0;
    virtual int32_t put_HeaderStyle(IVXRenderStyle* style) = 0;
    virtual int32_t get_FooterStyle(IVXRenderStyle** style) = 0;
    virtual int32_t put_FooterStyle(IVXRenderStyle* style) = 0;
    virtual int32_t get_Source(IVXBook** book) = 0;
    virtual int32_t put_Source(IVXBook* book) = 0;
    virtual int32_t Control(int code, int value) = 0;
    virtual int32_t Inquire(int code, int* value) = 0;
};

struct IVXTextReference : IUnknown {
    static const IID& Iid() { return IID_IVXTextReference; }
    virtual int32_t GetBuffer(wchar_t** text, int* length) = 0;
    virtual int32_t GetPosition(int* chapter, int* verse, int* count) = 0;
    virtual int32_t GetBook(IVXBook** book) = 0;
    // null and -1 keep the value held.
    virtual int32_t SetReference(IVXBook* book, wchar_t* text, int length, int chapter, int verse, int count) = 0;
};

// The string properties of a Bible book.
constexpr int BOOK_PROP_USERNAME = 1;
constexpr int BOOK_PROP_NAMEINTEXT = 2;
constexpr int BOOK_PROP_TRANSLATION = 3;

// The framework's text reference keeps its book alive while anyone but the book's own
// index holds it. The book tells it how many holds its index keeps, so that the index
// and the book make no cycle.
struct IVXTextReferenceHolds : IUnknown {
    static const IID& Iid() { return IID_IVXTextReferenceHolds; }
    virtual int32_t put_IndexHolds(int holds) = 0;
};

// Asked for by the editor's spelling support; no operation of it is called.
struct IVXSpellChecker : IUnknown {
    static const IID& Iid() { return IID_IVXSpellChecker; }
};
