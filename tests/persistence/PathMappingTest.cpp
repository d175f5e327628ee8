// Paths that survive a move of the installation, against a real registry file: the
// install path and the user's mappings, relative paths and their way back.
#include "persistence/PathMapping.h"
#include "support/Fixture.h"
#include "support/ScopedRegistry.h"

using namespace vxtest;

namespace {

const char kRegistry[] = "[Workspace]\nInstallPath=/opt/a\nAppPath=/srv/app\n"
                         "[Mappings]\nSongs=/home/u/songs\nDeep=/home/u/songs/deep\nEmpty=\nHome=/home/u\n";

class PathMappingTest : public ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        WriteBytes(m_File, kRegistry);
    }

    TempFolder m_Folder;
    std::filesystem::path m_File = m_Folder / "registry.ini";
    ScopedRegistry m_Scope{m_File};
};

// A result and the text it gave; "<untouched>" when the output kept its old value.
struct Outcome { int32_t m_Result; std::wstring m_Text; };

Outcome Call(int32_t (*function)(IString*, IString**), const wchar_t* input)
{
    auto sentinel = Str(L"<untouched>");
    IString* out = sentinel.get();
    int32_t result = function(Str(input), &out);
    if (out == sentinel.get())
        return {result, Text(sentinel)};
    return {result, Text(SmartPtr<IString>::Adopt(out))};
}

int32_t MapKeeping(IString* path, IString** out) { return FILENAMEMap(path, out, 0); }
int32_t MapStripping(IString* path, IString** out) { return FILENAMEMap(path, out, 1); }

TEST_F(PathMappingTest, MapsBelowTheInstallationAndByTheFirstMapping)
{
    const struct { const wchar_t* m_Path; bool m_Strip; int32_t m_Result; const wchar_t* m_Mapped; } cases[] = {
        {L"/opt/a/x.sng", false, S_OK, L"[InstallPath]/x.sng"},
        {L"/opt/a/x.sng", true, S_OK, L"x.sng"},
        {L"/opt/a", true, S_OK, L"[InstallPath]"},
        {L"/OPT/A/x", false, S_OK, L"[InstallPath]/x"},
        {L"/opt/ab/x", false, S_OK, L"[InstallPath]b/x"},
        {L"/home/u/songs/deep/x", false, S_OK, L"[Songs]/deep/x"},
        {L"/HOME/U/Songs/x", true, S_OK, L"[Songs]/x"},
        {L"/opt", false, E_FAIL, L"<untouched>"},
        {L"/elsewhere/x", false, E_FAIL, L"<untouched>"},
    };
    for (const auto& c : cases) {
        Outcome outcome = Call(c.m_Strip ? MapStripping : MapKeeping, c.m_Path);
        EXPECT_EQ(outcome.m_Result, c.m_Result) << Narrow(c.m_Path);
        EXPECT_EQ(outcome.m_Text, c.m_Mapped) << Narrow(c.m_Path);
    }
}

TEST_F(PathMappingTest, UnmapsKnownNamesOnly)
{
    const struct { const wchar_t* m_Mapped; int32_t m_Result; const wchar_t* m_Path; } cases[] = {
        {L"[InstallPath]/x.sng", S_OK, L"/opt/a/x.sng"},
        {L"[installpath]\\x", S_OK, L"/opt/a/x"},
        {L"[Songs]\\a\\b", S_OK, L"/home/u/songs/a/b"},
        {L"[Nothing]/x", E_FAIL, L"<untouched>"},
        {L"/plain/x", E_FAIL, L"<untouched>"},
        {L"[unclosed", E_FAIL, L"<untouched>"},
    };
    for (const auto& c : cases) {
        Outcome outcome = Call(FILENAMEUnmap, c.m_Mapped);
        EXPECT_EQ(outcome.m_Result, c.m_Result) << Narrow(c.m_Mapped);
        EXPECT_EQ(outcome.m_Text, c.m_Path) << Narrow(c.m_Mapped);
    }
}

TEST_F(PathMappingTest, RelativePathsAndTheWayBack)
{
    // m_Back: by FILENAMECreateAbsolute from the same base
    const struct { const wchar_t* m_Base; const wchar_t* m_Path; const wchar_t* m_Relative;
        const wchar_t* m_Back; } cases[] = {
        {L"/a/b/c.sng", L"/a/b/d/e.sng", L"..\\d/e.sng", L"/a/b/d/e.sng"},
        {L"/a/b/c/d.sng", L"/a/b/x.sng", L"..\\..\\x.sng", L"/a/b/x.sng"},
        {L"/A/B/c.sng", L"/a/b/d.sng", L"..\\d.sng", L"/A/B/d.sng"},
        {L"/a/c.sng", L"/a/d.sng", L"/a/d.sng", L"/a/d.sng"},
        {L"x", L"y", L"y", L"y"},
    };
    for (const auto& c : cases) {
        SmartPtr<IString> relative;
        ASSERT_EQ(FILENAMECreateRelative(Str(c.m_Base), Str(c.m_Path), relative.Receive()), S_OK);
        EXPECT_EQ(Text(relative), c.m_Relative) << Narrow(c.m_Base) << " " << Narrow(c.m_Path);
        SmartPtr<IString> absolute;
        FILENAMECreateAbsolute(Str(c.m_Base), relative, absolute.Receive());
        EXPECT_EQ(Text(absolute), c.m_Back) << "back from " << Narrow(c.m_Relative);
    }
}

TEST_F(PathMappingTest, AbsolutePaths)
{
    // The same steps up from a base too short stay below it: a path never climbs to the root.
    const struct { const wchar_t* m_Base; const wchar_t* m_Path; const wchar_t* m_Absolute; } cases[] = {
        {L"/r/a/b/c.sng", L"..\\..\\x.sng", L"/r/a/x.sng"},
        {L"/a/b/c.sng", L"..\\..\\x.sng", L"/a/b/c.sng/x.sng"},
        {L"/a/b", L"c:\\x", L"c:/x"},
        {L"/a/b", L"x.sng", L"/a/b/x.sng"},
        {L"/a/b", L"ab", L"ab"},
        {L"/a/b", L"", L""},
    };
    for (const auto& c : cases) {
        SmartPtr<IString> absolute;
        ASSERT_EQ(FILENAMECreateAbsolute(Str(c.m_Base), Str(c.m_Path), absolute.Receive()), S_OK);
        EXPECT_EQ(Text(absolute), c.m_Absolute) << Narrow(c.m_Base) << " " << Narrow(c.m_Path);
    }
    // An absolute path is handed back as the very string, its separators turned in place.
    auto given = Str(L"c:\\songs\\x.sng");
    SmartPtr<IString> absolute;
    FILENAMECreateAbsolute(Str(L"/a"), given, absolute.Receive());
    EXPECT_EQ(absolute.get(), given.get());
    EXPECT_EQ(Text(given), L"c:/songs/x.sng");
}

TEST_F(PathMappingTest, ApplicationPathFollowsTheOpenWorkspace)
{
    auto workspace = Create<IFileArchive>(L"ActiveWorkspace");
    ASSERT_TRUE(workspace);
    const struct { const wchar_t* m_Workspace; const wchar_t* m_AppPath; } cases[] = {
        {nullptr, L"/srv/app"},
        {L"/shows/easter/show.vxw", L"/shows/easter"},
        {L"/show.vxw", L"/srv/app"},
        {L"show.vxw", L"/srv/app"},
    };
    for (const auto& c : cases) {
        workspace->put_Filename(c.m_Workspace ? Str(c.m_Workspace) : nullptr);
        SmartPtr<IString> path;
        EXPECT_GE(FILENAMEGetAppPath(path.Receive()), 0);
        EXPECT_EQ(Text(path), c.m_AppPath) << (c.m_Workspace ? Narrow(c.m_Workspace) : "none");
        SmartPtr<IString> absolute;
        FILENAMECreateAbsolute(Str(L"x.sng"), absolute.Receive(), 1);
        EXPECT_EQ(Text(absolute), std::wstring(c.m_AppPath) + L"/x.sng");
    }
    workspace->put_Filename(nullptr);
    SmartPtr<IString> absolute;
    FILENAMECreateAbsolute(Str(L"x.sng"), absolute.Receive(), 0);
    EXPECT_EQ(Text(absolute), L"/opt/a/x.sng");
}

TEST_F(PathMappingTest, RegistryWithoutInstallPathOrMappings)
{
    WriteBytes(m_File, "[Workspace]\nAppPath=/srv/app\n");
    SmartPtr<IString> path;
    EXPECT_LT(FILENAMEGetInstallPath(path.Receive()), 0);
    ASSERT_TRUE(path) << "a string is handed out even so";
    EXPECT_EQ(Text(path), L"");
    EXPECT_LT(Call(MapKeeping, L"/opt/a/x").m_Result, 0);
    EXPECT_EQ(Call(FILENAMEUnmap, L"[InstallPath]/x").m_Result, E_FAIL);
}

} // namespace
