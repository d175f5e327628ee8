// The registry read from an INI file: files that hold no registry, the caller's
// bounded buffer, sections as collections, and a file that changes between calls.
#include <algorithm>

#include "support/Collections.h"
#include "support/ScopedRegistry.h"
#include "support/TextBytes.h"

using namespace vxtest;

namespace {

constexpr size_t kRoom = REGISTRY_STRING_BYTES / sizeof(wchar_t);

class RegistryTest : public ModuleTest {
protected:
    SmartPtr<IRegistry> Open(const std::string& bytes)
    {
        WriteBytes(m_File, bytes);
        return Create<IRegistry>(L"Registry");
    }

    // The value, or "<none>" when the registry has none.
    static std::wstring Value(IRegistry* registry, const wchar_t* section, const wchar_t* key)
    {
        SmartPtr<IString> value;
        if (registry->get_Value(Str(section), Str(key), value.Receive()) < 0)
            return L"<none>";
        return Text(value);
    }

    TempFolder m_Folder;
    std::filesystem::path m_File = m_Folder / "registry.ini";
    ScopedRegistry m_Scope{m_File};
};

TEST_F(RegistryTest, FilesThatHoldNoRegistryReadAsEmpty)
{
    const struct { const char* m_Case; bool m_Exists; std::string m_Bytes; } cases[] = {
        {"missing", false, ""},
        {"empty", true, ""},
        {"picture", true, Bytes("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\n[Workspace]\nAppPath=/x\n")},
        {"zero inside", true, Bytes("[Workspace]\nAppPath=/x\n\0\x01\x02")},
    };
    for (const auto& c : cases) {
        std::filesystem::remove(m_File);
        if (c.m_Exists)
            WriteBytes(m_File, c.m_Bytes);
        auto registry = Create<IRegistry>(L"Registry");
        ASSERT_TRUE(registry) << c.m_Case;
        EXPECT_EQ(Value(registry, L"Workspace", L"AppPath"), L"<none>") << c.m_Case;
        SmartPtr<INamedCollection> section;
        EXPECT_LT(registry->get_Section(Str(L"Workspace"), section.Receive()), 0) << c.m_Case;
        wchar_t buffer[kRoom] = {};
        EXPECT_LT(registry.As<IRegistryEx>()->get_String(L"Workspace", L"AppPath", buffer), 0) << c.m_Case;
        EXPECT_EQ(buffer[0], L'\0') << c.m_Case;
    }
}

TEST_F(RegistryTest, StringIsCutToTheCallersBuffer)
{
    // The buffer is followed by places the registry must never write.
    const struct { size_t m_Length; size_t m_Copied; } cases[] = {{5, 5}, {kRoom - 1, kRoom - 1}, {kRoom, kRoom - 1}, {400, kRoom - 1}};
    for (const auto& c : cases) {
        auto registry = Open("[UI]\nLong=" + std::string(c.m_Length, 'x') + "\n");
        wchar_t buffer[kRoom + 8];
        std::fill(buffer, buffer + kRoom, L'\0');
        std::fill(buffer + kRoom, buffer + kRoom + 8, L'#');
        ASSERT_EQ(registry.As<IRegistryEx>()->get_String(L"UI", L"long", buffer), S_OK) << c.m_Length;
        EXPECT_EQ(std::wcslen(buffer), c.m_Copied) << c.m_Length;
        EXPECT_TRUE(std::all_of(buffer + kRoom, buffer + kRoom + 8, [](wchar_t x) { return x == L'#'; }))
            << c.m_Length;
    }
}

TEST_F(RegistryTest, SectionsAreNamedCollectionsOfTheirValues)
{
    auto registry = Open("[Mappings]\nSongs=/srv/songs\n; a remark\nno value here\n[Other]\nx=1\n"
                         "[mappings]\nBibles = /srv/bibles \n");
    SmartPtr<INamedCollection> section;
    ASSERT_EQ(registry->get_Section(Str(L"MAPPINGS"), section.Receive()), S_OK);
    ASSERT_EQ(ItemNames(section), (std::vector<std::wstring>{L"Songs", L"Bibles"}));
    const wchar_t* values[] = {L"/srv/songs", L"/srv/bibles"};
    for (int i = 0; i < 2; ++i) {
        SmartPtr<IUnknown> item;
        section->get_Item(i, item.Receive());
        EXPECT_TRUE(item.As<IString>()) << "an item is the value as a string";
        EXPECT_EQ(Text(item), values[i]);
    }
    int index = -1;
    EXPECT_EQ(section->get_Index(Str(L"bibles"), &index), S_OK);
    EXPECT_EQ(index, 1);
    SmartPtr<INamedCollection> missing;
    EXPECT_LT(registry->get_Section(Str(L"Nothing"), missing.Receive()), 0);
}

TEST_F(RegistryTest, EveryCallSeesThePresentFile)
{
    auto registry = Open("[Vexilon]\nCCLI=1111\n");
    EXPECT_EQ(Value(registry, L"Vexilon", L"CCLI"), L"1111");
    // Same size, written at once: only the content tells the two apart.
    WriteBytes(m_File, "[Vexilon]\nCCLI=2222\n");
    EXPECT_EQ(Value(registry, L"Vexilon", L"CCLI"), L"2222");
    std::filesystem::remove(m_File);
    EXPECT_EQ(Value(registry, L"Vexilon", L"CCLI"), L"<none>");
    auto other = m_Folder / "other.ini";
    WriteBytes(other, "[Vexilon]\nCCLI=3333\n");
    ScopedRegistry elsewhere(other);
    EXPECT_EQ(Value(registry, L"Vexilon", L"CCLI"), L"3333");
}

TEST_F(RegistryTest, WithoutVariableTheBuildFolderRegistryCounts)
{
    unsetenv("VX_REGISTRY");
    auto registry = Create<IRegistry>(L"Registry");
    EXPECT_EQ(Value(registry, L"Workspace", L"AppPath"), std::wstring(L"" VX_BUILD_DIR));
    EXPECT_EQ(Value(registry, L"Workspace", L"InstallPath"), std::wstring(L"" VX_SOURCE_DIR) + L"/samples");
}

} // namespace
