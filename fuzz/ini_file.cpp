// Any bytes as an INI file: read by "INIFile" and by the registry, sections walked,
// values copied into the caller's bounded buffer, paths mapped with what was read.
// What the file component saves must read back with the same number of entries.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "persistence/PathMapping.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

namespace {

const wchar_t* const kSections[] = {L"Workspace", L"Mappings", L"Bible", L""};

template <class I> SmartPtr<I> Make(tagREFString component)
{
    IID iid = I::Iid();
    return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(component, &iid))));
}

SmartPtr<IString> Wide(const std::string& text)
{
    std::wstring wide(text.begin(), text.end());
    return SmartPtr<IString>::Adopt(ISCreate(CREFString(wide.data(), int32_t(wide.size()))));
}

void WalkSection(INamedCollection* section)
{
    int count = 0;
    section->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> item;
        section->get_ItemName(i, name.Receive());
        section->get_Item(i, item.Receive());
        int index = -1;
        section->get_Index(name, &index);
    }
}

void ReadRegistry()
{
    auto registry = Make<IRegistry>(REFLiteral(L"Registry"));
    if (!registry)
        return;
    for (const wchar_t* name : kSections) {
        auto section = SmartPtr<IString>::Adopt(ISCreate(name));
        SmartPtr<INamedCollection> entries;
        if (registry->get_Section(section, entries.Receive()) >= 0)
            WalkSection(entries);
        // A value may fill the buffer to its end; the places behind it must stay.
        wchar_t buffer[REGISTRY_STRING_BYTES / sizeof(wchar_t) + 1] = {};
        buffer[REGISTRY_STRING_BYTES / sizeof(wchar_t)] = L'#';
        registry.As<IRegistryEx>()->get_String(name, L"InstallPath", buffer);
        if (buffer[REGISTRY_STRING_BYTES / sizeof(wchar_t)] != L'#')
            std::abort();
    }
    const wchar_t* paths[] = {L"/opt/a/x.sng", L"//x", L"[InstallPath]\\y", L"[Songs]/z"};
    for (const wchar_t* path : paths) {
        auto given = SmartPtr<IString>::Adopt(ISCreate(path));
        SmartPtr<IString> out;
        FILENAMEMap(given, out.Receive(), 0);
        FILENAMEUnmap(given, out.Receive());
    }
}

// Entries of each known section, or -1 where it can't be read.
std::vector<int> Counts(IFileArchive* ini)
{
    std::vector<int> counts;
    for (const wchar_t* name : kSections) {
        QueryAs<IINIFile>(ini)->put_Section(SmartPtr<IString>::Adopt(ISCreate(name)));
        auto parameters = QueryAs<IParameters>(ini);
        int count = -1;
        parameters->get_Count(&count);
        WalkSection(parameters);
        counts.push_back(count);
    }
    return counts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count)
{
    static const std::string input = "/tmp/vx-fuzz-ini-" + std::to_string(getpid()) + ".ini";
    static const std::string saved = "/tmp/vx-fuzz-ini-saved-" + std::to_string(getpid()) + ".ini";
    FILE* file = std::fopen(input.c_str(), "wb");
    if (!file)
        return 0;
    std::fwrite(bytes, 1, count, file);
    std::fclose(file);
    setenv("VX_REGISTRY", input.c_str(), 1);
    ReadRegistry();

    auto ini = Make<IFileArchive>(REFLiteral(L"INIFile"));
    if (ini) {
        ini->put_Filename(Wide(input));
        if (ini->Load() >= 0) {
            std::vector<int> before = Counts(ini);
            ini->put_Filename(Wide(saved));
            if (ini->Save() >= 0) {
                auto again = Make<IFileArchive>(REFLiteral(L"INIFile"));
                again->put_Filename(Wide(saved));
                again->Load();
                if (Counts(again) != before)
                    std::abort();
            }
            std::remove(saved.c_str());
        }
    }
    std::remove(input.c_str());
    return 0;
}
