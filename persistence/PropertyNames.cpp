#include "persistence/PropertyNames.h"

#include <cwchar>
#include <cwctype>
#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "persistence/PathMapping.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

// The length of the "_xHHHH_" at `at` (and its character), or 1.
int32_t PROPEscapeWidth(const CREFString& name, int32_t at, wchar_t* c)
{
    if (name.At(at) != L'_' || name.At(at + 1) != L'x')
        return 1;
    unsigned int code = 0;
    int32_t k = at + 2;
    for (; k < at + 10 && HexDigitValue(name.At(k)) >= 0; ++k)
        code = code * 16 + unsigned(HexDigitValue(name.At(k)));
    if (k == at + 2 || name.At(k) != L'_')
        return 1;
    *c = wchar_t(code);
    return k + 1 - at;
}

} // namespace

SmartPtr<IString> PROPText(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

SmartPtr<IString> PROPIDText(int id)
{
    wchar_t digits[16];
    _swprintf(digits, 16, L"%i", id);
    return PROPText(digits);
}

struct PROPTableHold::Kept {
    // One component's table, and the texts already taken from it by id.
    struct Table {
        std::wstring m_Key;
        SmartPtr<INamedCollection> m_Table;
        std::vector<std::pair<int, SmartPtr<IString>>> m_Texts;
    };
    std::vector<Table> m_Tables;
};

namespace {

// The tables of the outermost hold of this thread, or null when none is open.
// One hold at a time, on the thread that opened it: other threads look their
// tables up as if none were open. Only the owner thread touches the kept tables.
std::atomic<std::thread::id> gHoldOwner{std::thread::id()};

PROPTableHold::Kept& HeldTables()
{
    // Emptied at the end of every hold; made once and kept to the end of the process.
    static PROPTableHold::Kept* const gKept = new PROPTableHold::Kept;
    return *gKept;
}

// The kept tables if this thread holds them, else null.
PROPTableHold::Kept* OwnHeldTables()
{
    return gHoldOwner.load(std::memory_order_acquire) == std::this_thread::get_id() ? &HeldTables() : nullptr;
}

// The name that the table is asked for by: the owner's own text, or the name of
// the component that the object says it is. Empty: keep nothing.
CREFString PROPHoldKey(IString* ownerName, IUnknown* object)
{
    if (ownerName)
        return CREFString(static_cast<IUnknown*>(ownerName));
    tagREFString name{0, nullptr};
    auto info = QueryAs<IObjectInfo>(object);
    if (!info || info->GetName(0, &name) < 0 || !name.m_Buffer)
        return CREFString();
    return CREFString(name);
}

SmartPtr<INamedCollection> PROPLookUpTable(SmartPtr<IString> name, IUnknown* object)
{
    if (!name) {
        IID iid = IComponentString::Iid();
        auto record = SmartPtr<IComponentString>::Adopt(
            static_cast<IComponentString*>(static_cast<void*>(CreateObject(REFLiteral(L"ComponentString"), &iid))));
        if (!record)
            return nullptr;
        record->put_Object(object);
        record->get_Field(COMPONENT_FIELD_NAME, name.Receive());
    }
    IID iid = IStringTable::Iid();
    auto strings = SmartPtr<IStringTable>::Adopt(
        static_cast<IStringTable*>(static_cast<void*>(CreateObject(REFLiteral(L"StringTable"), &iid))));
    SmartPtr<INamedCollection> table;
    if (strings && name)
        strings->get_Table(name, table.Receive());
    return table;
}

// The held table of the component, looked up now if it is not held yet; null when
// no hold is open or the component can't be named.
PROPTableHold::Kept::Table* PROPHeldTable(IUnknown* owner, IUnknown* self)
{
    PROPTableHold::Kept* kept = OwnHeldTables();
    if (!kept)
        return nullptr;
    auto name = QueryAs<IString>(owner);
    IUnknown* object = owner ? owner : self;
    CREFString key = PROPHoldKey(name.get(), object);
    if (key.m_Length < 1 || !key.m_Buffer)
        return nullptr;
    for (PROPTableHold::Kept::Table& held : kept->m_Tables)
        if (held.m_Key.size() == size_t(key.m_Length) && std::wmemcmp(held.m_Key.data(), key.m_Buffer, held.m_Key.size()) == 0)
            return &held;
    // A missing table is kept as well: it stays missing for the length of the hold.
    PROPTableHold::Kept::Table held{std::wstring(key.m_Buffer, size_t(key.m_Length)), PROPLookUpTable(name, object), {}};
    kept->m_Tables.push_back(std::move(held));
    return &kept->m_Tables.back();
}

} // namespace

PROPTableHold::PROPTableHold()
{
    std::thread::id none;
    m_Owner = gHoldOwner.compare_exchange_strong(none, std::this_thread::get_id(), std::memory_order_acq_rel);
}

PROPTableHold::~PROPTableHold()
{
    if (!m_Owner)
        return;
    HeldTables().m_Tables.clear();
    gHoldOwner.store(std::thread::id(), std::memory_order_release);
}

SmartPtr<INamedCollection> PROPOwnerTable(IUnknown* owner, IUnknown* self)
{
    if (PROPTableHold::Kept::Table* held = PROPHeldTable(owner, self))
        return held->m_Table;
    // Only a given owner may be a name: the object itself may well read as a string.
    return PROPLookUpTable(QueryAs<IString>(owner), owner ? owner : self);
}

SmartPtr<IString> PROPOwnerTableText(IUnknown* owner, IUnknown* self, int id)
{
    PROPTableHold::Kept::Table* held = PROPHeldTable(owner, self);
    if (!held)
        return PROPTableText(PROPOwnerTable(owner, self), id);
    for (const auto& [heldID, text] : held->m_Texts)
        if (heldID == id)
            return text;
    SmartPtr<IString> text = PROPTableText(held->m_Table, id);
    held->m_Texts.emplace_back(id, text);
    return text;
}

// The text of the item named id, or null. Names are matched whole: a table's
// search by name may take "1" for the beginning of "11".
SmartPtr<IString> PROPTableText(INamedCollection* table, int id)
{
    if (!table)
        return nullptr;
    SmartPtr<IString> wanted = PROPIDText(id);
    CREFString digits(wanted.get());
    int count = 0;
    table->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        if (table->get_ItemName(i, name.Receive()) < 0)
            continue;
        CREFString view(name.get());
        if (view.m_Length != digits.m_Length || std::wmemcmp(view.m_Buffer, digits.m_Buffer, size_t(view.m_Length)))
            continue;
        SmartPtr<IUnknown> item;
        table->get_Item(i, item.Receive());
        return QueryAs<IString>(item.get());
    }
    return nullptr;
}

// The name of a property in the stream forms: its text in the table with "_" for
// each space, or its id in digits.
SmartPtr<IString> PROPKey(INamedCollection* table, int id)
{
    SmartPtr<IString> text = PROPTableText(table, id);
    CREFString view(text.get());
    if (!text || view.m_Length < 1 || !view.m_Buffer)
        return PROPIDText(id);
    std::wstring key(view.m_Buffer, size_t(view.m_Length));
    for (wchar_t& c : key)
        if (c == L' ')
            c = L'_';
    return SmartPtr<IString>::Adopt(ISCreate(CREFString(key.data(), int32_t(key.size()))));
}

// A tag's name against a key, by towlower. A key that is no XML name (one that
// begins with a digit, say) stands in the file with "_xHHHH_" for a character.
bool PROPKeyEquals(IString* key, CREFString name)
{
    CREFString view(key);
    int32_t at = 0;
    for (int32_t i = 0; i < view.m_Length; ++i) {
        wchar_t c = name.At(at);
        int32_t width = PROPEscapeWidth(name, at, &c);
        if (at >= name.m_Length || std::towlower(wint_t(view.m_Buffer[i])) != std::towlower(wint_t(c)))
            return false;
        at += width;
    }
    return at == name.m_Length;
}

// The next opening tag's name; the view stays at its "<" for XMLGetTAGGED.
bool PROPNextTagName(CREFString& text, CREFString* name)
{
    int32_t open = -1;
    for (int32_t i = 0; i < text.m_Length; ++i) {
        if (text.m_Buffer[i] == L'<' && text.At(i + 1) != L'/') {
            open = i;
            break;
        }
    }
    if (open < 0)
        return false;
    int32_t close = -1;
    for (int32_t i = open + 1; i < text.m_Length; ++i) {
        if (text.m_Buffer[i] == L'>') {
            close = i;
            break;
        }
    }
    if (close < 0)
        return false;
    int32_t first = open + 1, last = close;
    auto leading = [](wchar_t c) { return std::iswspace(wint_t(c)) || c < 32 || c == 239 || c == 254; };
    while (first < last && leading(text.m_Buffer[first]))
        ++first;
    while (last > first && (text.m_Buffer[last - 1] < 33 || text.m_Buffer[last - 1] == 127))
        --last;
    *name = CREFString(text.m_Buffer + first, last - first);
    text = CREFString(text.m_Buffer + open, text.m_Length - open);
    return true;
}

// Moves the view past the "<" of the tag that failed.
void PROPSkipPast(CREFString& text)
{
    if (text.m_Length > 0)
        text = CREFString(text.m_Buffer + 1, text.m_Length - 1);
}

SmartPtr<IString> PROPRelativePath(const SmartPtr<IString>& path)
{
    if (CREFString(path.get()).IsEmpty())
        return path;
    SmartPtr<IString> install, relative;
    FILENAMEGetInstallPath(install.Receive());
    if (FILENAMECreateRelative(install, path, relative.Receive()) >= 0 && relative)
        return relative;
    return path;
}

// The text with every "\\" turned into "/".
SmartPtr<IString> PROPSlashed(const SmartPtr<IString>& text)
{
    CREFString view(text.get());
    std::wstring path(view.m_Buffer ? view.m_Buffer : L"", size_t(view.m_Length > 0 ? view.m_Length : 0));
    for (wchar_t& c : path)
        if (c == L'\\')
            c = L'/';
    return SmartPtr<IString>::Adopt(ISCreate(CREFString(path.data(), int32_t(path.size()))));
}
