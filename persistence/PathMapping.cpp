#include "persistence/PathMapping.h"

#include <cwctype>
#include <iterator>
#include <string>

#include "runtime/Factories.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

bool SameLetter(wchar_t a, wchar_t b) { return std::towlower(wint_t(a)) == std::towlower(wint_t(b)); }

// text begins with prefix, case aside, over the prefix's whole length.
bool BeginsWith(const CREFString& text, const CREFString& prefix)
{
    if (prefix.m_Length > text.m_Length)
        return false;
    for (int32_t i = 0; i < prefix.m_Length; ++i)
        if (!SameLetter(text.At(i), prefix.At(i)))
            return false;
    return true;
}

// "//" ahead of a path stands for one "/".
CREFString OneLeadingSlash(CREFString view, int32_t minimum)
{
    if (view.m_Length >= minimum && view.At(0) == L'/' && view.At(1) == L'/') {
        ++view.m_Buffer;
        --view.m_Length;
    }
    return view;
}

// The text of view from index from on; empty past the end.
std::wstring Tail(const CREFString& view, int32_t from)
{
    if (from < 0 || from >= view.m_Length)
        return {};
    return std::wstring(view.m_Buffer + from, size_t(view.m_Length - from));
}

IString* NewString(const std::wstring& text) { return ISCreate(CREFString(text.data(), int32_t(text.size()))); }

// Paths keep "/" inside: every "\" of the string itself, from index from on, becomes one.
void ForwardSlashes(IString* path, int32_t from)
{
    wchar_t* buffer = nullptr;
    int length = 0;
    if (!path || path->GetBuffer(&buffer, &length) < 0 || !buffer)
        return;
    for (int32_t i = from < 0 ? 0 : from; i < length; ++i)
        if (buffer[i] == L'\\')
            buffer[i] = L'/';
}

// The install path, as the registry holds it; empty if it holds none.
SmartPtr<IString> InstallPathValue(IRegistry* registry)
{
    auto section = SmartPtr<IString>::Adopt(ISCreate(L"Workspace"));
    auto key = SmartPtr<IString>::Adopt(ISCreate(L"InstallPath"));
    SmartPtr<IString> value;
    if (registry->get_Value(section, key, value.Receive()) < 0)
        value.Clear();
    return value;
}

} // namespace

// The registry's Workspace value key, read into the caller's buffer of 712 bytes.
int32_t ReadWorkspaceValue(const wchar_t* key, IString** path)
{
    wchar_t buffer[REGISTRY_STRING_BYTES / sizeof(wchar_t)] = {};
    auto registry = SmartPtr<IRegistryEx>::Adopt(BASEObject::CreateRegistryEx());
    int32_t result = registry ? registry->get_String(L"Workspace", key, buffer) : E_FAIL;
    // The registry may have filled the buffer to its last place: the text ends there.
    buffer[std::size(buffer) - 1] = L'\0';
    *path = ISCreate(buffer);
    return result;
}

int32_t FILENAMEGetAppPath(IString** path)
{
    if (!path)
        return E_POINTER;
    // An open workspace puts the application's files beside itself.
    IID iid = IFileArchive::Iid();
    auto workspace = SmartPtr<IFileArchive>::Adopt(
        static_cast<IFileArchive*>(static_cast<void*>(CreateObject(REFLiteral(L"ActiveWorkspace"), &iid))));
    SmartPtr<IString> name;
    if (workspace)
        workspace->get_Filename(name.Receive());
    CREFString file(name.get());
    for (int32_t i = file.m_Length - 1; i > 0; --i) {
        if (file.At(i) == L'/') {
            *path = ISCreate(CREFString(file.m_Buffer, i));
            return S_OK;
        }
    }
    return ReadWorkspaceValue(L"AppPath", path);
}

int32_t FILENAMEGetInstallPath(IString** path)
{
    if (!path)
        return E_POINTER;
    return ReadWorkspaceValue(L"InstallPath", path);
}

int32_t FILENAMEMap(IString* path, IString** mapped, short strip)
{
    if (!mapped)
        return E_POINTER;
    auto registry = SmartPtr<IRegistry>::Adopt(BASEObject::CreateRegistry());
    if (!registry)
        return E_NOTRUNNING;
    SmartPtr<IString> installValue = InstallPathValue(registry);
    CREFString file = OneLeadingSlash(CREFString(path), 3);
    CREFString install = OneLeadingSlash(CREFString(installValue.get()), 2);

    // Below the installation: the plain prefix decides, not the folders, so that
    // "/opt/ab" lies below "/opt/a".
    if (!install.IsEmpty() && BeginsWith(file, install)) {
        std::wstring rest = Tail(file, install.m_Length);
        if (strip) {
            if (!rest.empty() && IsSeparator(rest.front()))
                rest.erase(0, 1);
            *mapped = NewString(rest.empty() ? std::wstring(L"[InstallPath]") : rest);
        } else {
            *mapped = NewString(L"[InstallPath]" + rest);
        }
        return S_OK;
    }

    auto sectionName = SmartPtr<IString>::Adopt(ISCreate(L"Mappings"));
    SmartPtr<INamedCollection> section;
    int32_t result = registry->get_Section(sectionName, section.Receive());
    if (result < 0)
        return result;
    int count = 0;
    section->get_Count(&count);
    if (count < 1)
        return E_FAIL;
    // The first mapping that covers the path wins, not the longest.
    for (int index = 0; index < count; ++index) {
        SmartPtr<IUnknown> item;
        section->get_Item(index, item.Receive());
        CREFString prefix(item.get());
        if (prefix.IsEmpty() || prefix.m_Length > file.m_Length || !BeginsWith(file, prefix))
            continue;
        SmartPtr<IString> name;
        section->get_ItemName(index, name.Receive());
        CREFString symbol(name.get());
        std::wstring text = L"[" + Tail(symbol, 0) + L"]" + Tail(file, prefix.m_Length);
        *mapped = NewString(text);
        return S_OK;
    }
    return E_FAIL;
}

int32_t FILENAMEUnmap(IString* mapped, IString** path)
{
    if (!path)
        return E_POINTER;
    CREFString text(mapped);
    // Anything else was stored as it stands.
    if (text.IsEmpty() || text.At(0) != L'[')
        return E_FAIL;
    auto registry = SmartPtr<IRegistry>::Adopt(BASEObject::CreateRegistry());
    if (!registry)
        return E_FAIL;
    int32_t close = 1;
    while (close < text.m_Length && text.At(close) != L']')
        ++close;
    if (close >= text.m_Length)
        return E_FAIL;
    CREFString name(text.m_Buffer + 1, close - 1);
    static const wchar_t kInstall[] = L"InstallPath";
    SmartPtr<IString> value;
    int32_t result;
    if (name.m_Length == int32_t(std::size(kInstall) - 1) && BeginsWith(name, CREFString(kInstall))) {
        value.Attach(InstallPathValue(registry).Detach());
        result = value ? S_OK : E_FAIL;
    } else {
        auto section = SmartPtr<IString>::Adopt(ISCreate(L"Mappings"));
        auto key = SmartPtr<IString>::Adopt(ISCreate(name));
        result = registry->get_Value(section, key, value.Receive());
    }
    if (result < 0)
        return E_FAIL;
    std::wstring whole = Tail(CREFString(value.get()), 0) + Tail(text, close + 1);
    for (wchar_t& c : whole)
        if (c == L'\\')
            c = L'/';
    *path = NewString(whole);
    return S_OK;
}

int32_t FILENAMECreateRelative(IString* base, IString* path, IString** relative)
{
    if (!relative)
        return E_POINTER;
    CREFString from(base);
    CREFString to(path);
    int32_t shorter = from.m_Length < to.m_Length ? from.m_Length : to.m_Length;
    // The index of the last equal character where a difference ended the walk; the
    // common length where the shorter name ran out.
    int32_t common = shorter;
    for (int32_t i = 0; i < shorter; ++i) {
        if (!SameLetter(from.At(i), to.At(i))) {
            common = i - 1;
            break;
        }
    }
    int32_t last = -1;
    int separators = 0;
    for (int32_t i = 1; i <= common; ++i) {
        if (IsSeparator(to.At(i))) {
            last = i;
            ++separators;
        }
    }
    // Sharing only the root, or a single folder, leaves the path absolute.
    if (common < 1 || separators < 2) {
        *relative = SmartPtr<IString>(path).Detach();
        return S_OK;
    }
    // One level for the file name of base, counted also when base ends in a
    // separator: FILENAMECreateAbsolute takes that level off again.
    int levels = last < from.m_Length ? 1 : 0;
    for (int32_t i = last + 1; i < from.m_Length; ++i)
        if (IsSeparator(from.At(i)))
            ++levels;
    std::wstring text;
    for (int i = 0; i < levels; ++i)
        text += L"..\\";
    text += Tail(to, last + 1);
    *relative = NewString(text);
    return S_OK;
}

int32_t FILENAMECreateAbsolute(IString* base, IString* path, IString** absolute)
{
    if (!absolute)
        return E_POINTER;
    CREFString file(path);
    if (file.IsEmpty()) {
        *absolute = SmartPtr<IString>(path).Detach();
        return S_OK;
    }
    bool hasColon = false;
    for (int32_t i = 0; i < file.m_Length; ++i)
        hasColon = hasColon || file.At(i) == L':';
    int32_t ups = 0;
    while (file.At(3 * ups) == L'.' && file.At(3 * ups + 1) == L'.' && file.At(3 * ups + 2) == L'\\')
        ++ups;
    // Absolute already: only the separators change, in the caller's own string.
    if (hasColon || file.At(0) == L'/' || (ups == 0 && file.m_Length < 3)) {
        ForwardSlashes(path, 0);
        *absolute = SmartPtr<IString>(path).Detach();
        return S_OK;
    }
    CREFString folder(base);
    int32_t end = folder.m_Length;
    int found = 0;
    for (int32_t i = folder.m_Length - 1; i >= 1 && found < ups; --i) {
        if (folder.At(i) == L'/' && ++found == ups)
            end = i;
    }
    // Too short a base stays whole, so a path never climbs to the root.
    if (end <= 2)
        end = folder.m_Length;
    ForwardSlashes(path, 3 * ups);
    file = CREFString(path);
    std::wstring text = Tail(folder, 0).substr(0, size_t(end > 0 ? end : 0)) + L"/" + Tail(file, 3 * ups);
    *absolute = NewString(text);
    return S_OK;
}

int32_t FILENAMECreateAbsolute(IString* path, IString** absolute, int fromApp)
{
    SmartPtr<IString> base;
    if (fromApp)
        FILENAMEGetAppPath(base.Receive());
    else
        FILENAMEGetInstallPath(base.Receive());
    return FILENAMECreateAbsolute(base, path, absolute);
}
