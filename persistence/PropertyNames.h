// What the property table needs around its entries: the string table of a
// component, the names under which properties stand in the stream forms, and the
// small text jobs of reading them back.
#pragma once
#include <cstring>

#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

// The bits of a float carried in an int, both ways.
inline int PropFloatBits(float value)
{
    int bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}
inline float PropBitsFloat(int bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// A new string of the text.
SmartPtr<IString> PROPText(const wchar_t* text);
// The identifier in digits, "%i".
SmartPtr<IString> PROPIDText(int id);
// The string table of a component: owner is the component's name when it is a
// string, else the component that owner, or failing it self, is an object of.
// Null when there is none.
SmartPtr<INamedCollection> PROPOwnerTable(IUnknown* owner, IUnknown* self);
// While one lives on a thread, PROPOwnerTable hands out again the table it found
// for a component, instead of asking for it anew: a song that cuts its text into
// verses looks the verse's table up once, not twice for every verse. Holds nest;
// the outermost one keeps the tables and lets them go when it ends. One thread at
// a time holds; another thread meanwhile looks its tables up each time.
class PROPTableHold {
public:
    PROPTableHold();
    ~PROPTableHold();
    PROPTableHold(const PROPTableHold&) = delete;
    PROPTableHold& operator=(const PROPTableHold&) = delete;

    struct Kept;

private:
    bool m_Owner = false;
};
// The text of item id in the string table that PROPOwnerTable finds; null when
// there is none. Under a hold, each text is taken from the table once.
SmartPtr<IString> PROPOwnerTableText(IUnknown* owner, IUnknown* self, int id);
// The text of the table's item named id, or null.
SmartPtr<IString> PROPTableText(INamedCollection* table, int id);
// The name of a property in the stream forms.
SmartPtr<IString> PROPKey(INamedCollection* table, int id);
// A tag's name, as the file holds it, against a key.
bool PROPKeyEquals(IString* key, CREFString name);
// The name of the next opening tag; the view moves to its "<". False when none is left.
bool PROPNextTagName(CREFString& text, CREFString* name);
// Moves the view past the "<" of a tag that couldn't be read.
void PROPSkipPast(CREFString& text);
// A path relative to the installation; the path itself if it can't be made so.
SmartPtr<IString> PROPRelativePath(const SmartPtr<IString>& path);
// The text with every "\\" turned into "/".
SmartPtr<IString> PROPSlashed(const SmartPtr<IString>& text);
// A colour between the program's order (red in the low byte) and the text's.
inline unsigned int PROPSwapRedBlue(unsigned int color)
{
    return (color & 0xFF00FF00u) | ((color & 0xFFu) << 16) | ((color >> 16) & 0xFFu);
}
