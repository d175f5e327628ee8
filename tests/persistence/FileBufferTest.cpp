// Reading and writing text files on disk: encoding detection, the wide forms, the
// name conversion, and saving.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "persistence/FileBuffer.h"
#include "persistence/FileNameUTF8.h"
#include "support/Fixture.h"

namespace {

using Bytes = std::string;
using Elements = std::vector<uint32_t>;
using vxtest::View;

std::wstring Wide(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

struct Loaded {
    int32_t m_Result = 0;
    Elements m_Elements;   // the counted bytes or wide elements
    uint32_t m_Behind = 0; // the element just behind them, where the form has one
};

Loaded Load(const std::filesystem::path& file, short mode, int maxBytes = 0)
{
    std::wstring name = Wide(file.string());
    void* data = nullptr;
    unsigned long size = 12345;
    Loaded loaded;
    loaded.m_Result = FileArchiveLoad(View(name), &data, &size, mode, maxBytes);
    if (loaded.m_Result < 0) {
        EXPECT_EQ(data, nullptr) << "outputs are untouched on failure";
        EXPECT_EQ(size, 12345u);
        return loaded;
    }
    if (mode == FILELOAD_RAW) {
        auto* bytes = static_cast<unsigned char*>(data);
        loaded.m_Elements.assign(bytes, bytes + size);
        delete[] bytes;
        return loaded;
    }
    auto* text = static_cast<wchar_t*>(data);
    for (unsigned long k = 0; k < size; ++k)
        loaded.m_Elements.push_back(uint32_t(text[k]));
    // The 16-bit form counts its zero; the others have it behind the count.
    if (size > 0 && text[size - 1] != 0)
        loaded.m_Behind = uint32_t(text[size]);
    delete[] text;
    return loaded;
}

struct LoadCase {
    const char* m_What;
    Bytes m_Bytes;
    short m_Mode;
    int m_MaxBytes;
    int32_t m_Result;
    Elements m_Elements;
};

TEST(FileBuffer, DetectsAndDecodesEachForm)
{
    const LoadCase cases[] = {
        {"mark at the start, checking mode", Bytes("\xFF\xFE\x41\x00\x0A\x00", 6), 2, 0, S_OK, {0x41, 0x0A, 0}},
        {"mark at 4 comes through as a negative unit", Bytes("ABCD\xFF\xFE\x45\x00", 8), 1, 0, S_OK,
         {0x4443, 0xFFFFFEFF, 0x45, 0}},
        {"mark at 8 is the last one looked for", Bytes("ABCDEFGH\xFE\xFF", 10), 1, 0, S_OK,
         {0x4443, 0x4645, 0x4847, 0xFFFFFFFE, 0}},
        {"mark at 9 is too far: lenient UTF-8", Bytes("ABCDEFGHI\xFF\xFE", 11), 1, 0, S_FALSE,
         {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 'I', 0x7FE}},
        {"big-endian mark read the little-endian way", Bytes("\xFE\xFF\x00\x41", 4), 1, 0, S_OK, {0x4100, 0}},
        {"units from 0x8000 are negative", Bytes("\xFF\xFE\x00\x80\xFF\xFF", 6), 1, 0, S_OK,
         {0xFFFF8000, 0xFFFFFFFF, 0}},
        {"zero high bytes without a mark drop the first unit", Bytes("A\0B\0", 4), 1, 0, S_OK, {'B', 0}},
        {"three bytes give one zero element", Bytes("A\0B", 3), 2, 0, S_OK, {0}},
        {"high-byte test stops at index 5 of six bytes", Bytes("A\0BCDE", 6), 1, 0, S_FALSE,
         {'A', 0, 'B', 'C', 'D', 'E'}},
        {"one byte is 16-bit with no element", Bytes("A"), 1, 0, S_OK, {}},
        {"valid UTF-8, checking mode", Bytes("Caf\xC3\xA9"), 2, 0, S_FALSE, {'C', 'a', 'f', 0xE9}},
        {"Latin-1, checking mode", Bytes("Caf\xE9"), 2, 0, S_OK, {'C', 'a', 'f', 0xE9}},
        {"Latin-1, lenient mode keeps the low six bits", Bytes("Caf\xE9"), 1, 0, S_FALSE, {'C', 'a', 'f', 0x29}},
        {"UTF-8 mark stays a character", Bytes("\xEF\xBB\xBF" "AB"), 2, 0, S_FALSE, {0xFEFF, 'A', 'B'}},
        {"continuation bytes are not checked", Bytes("AB\xC3\x41"), 1, 0, S_FALSE, {'A', 'B', 0xC1}},
        {"a character across the eighth byte", Bytes("ABCDEFG\xC3\xA9HIJKLMNOP"), 1, 0, S_FALSE,
         {'A', 'B', 'C', 'D', 'E', 'F', 'G', 0xE9, 'H', 'I', 'J', 'K', 'L', 'M', 'N', 'O', 'P'}},
        {"a three-byte lead takes an ASCII byte unchecked", Bytes("ABCDEFGH\xE2\x82IJKLMNOPQ"), 1, 0, S_FALSE,
         {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 0x2089, 'J', 'K', 'L', 'M', 'N', 'O', 'P', 'Q'}},
        {"a lead byte last keeps its low bits", Bytes("ABCDEFGHIJKLMNOP\xC3"), 1, 0, S_FALSE,
         {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 'I', 'J', 'K', 'L', 'M', 'N', 'O', 'P', 0x03}},
        {"a four-byte lead cut short by the end", Bytes("ABCDEFGH\xF0\x9F"), 1, 0, S_FALSE,
         {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 0x41F}},
        {"a four-byte character inside the text", Bytes("AB\xF0\x9F\x98\x80" "C"), 2, 0, S_FALSE,
         {'A', 'B', 0x1F600, 'C'}},
        {"a four-byte character ending the text fails the check", Bytes("AB\xF0\x9F\x98\x80"), 2, 0, S_OK,
         {'A', 'B', 0xF0, 0x9F, 0x98, 0x80}},
        {"two-byte value 0x7FF fails the check", Bytes("AB\xDF\xBF"), 2, 0, S_OK, {'A', 'B', 0xDF, 0xBF}},
        {"two-byte value 0x7FE passes", Bytes("AB\xDF\xBE"), 2, 0, S_FALSE, {'A', 'B', 0x7FE}},
        {"above 0x10FFFF fails", Bytes("AB\xF4\x90\x80\x80!"), 2, 0, S_OK, {'A', 'B', 0xF4, 0x90, 0x80, 0x80, '!'}},
        {"raw bytes are untouched", Bytes("\xFF\xFE\x00\x41", 4), 0, 0, S_OK, {0xFF, 0xFE, 0x00, 0x41}},
        {"raw bytes up to maxBytes", Bytes("\xFF\xFE\x00\x41", 4), 0, 3, S_OK, {0xFF, 0xFE, 0x00}},
        {"maxBytes: only the first four bytes are tested", Bytes("A\0B\0CDEF", 8), 1, 4, S_OK, {'B', 0}},
    };
    vxtest::TempFolder folder;
    for (const LoadCase& c : cases) {
        SCOPED_TRACE(c.m_What);
        auto file = folder / "case.txt";
        vxtest::WriteBytes(file, c.m_Bytes);
        Loaded loaded = Load(file, c.m_Mode, c.m_MaxBytes);
        EXPECT_EQ(loaded.m_Result, c.m_Result);
        EXPECT_EQ(loaded.m_Elements, c.m_Elements);
        EXPECT_EQ(loaded.m_Behind, 0u);
    }
}

TEST(FileBuffer, FilesThatCannotBeReadFail)
{
    vxtest::TempFolder folder;
    vxtest::WriteBytes(folder / "empty.txt", "");
    vxtest::WriteBytes(folder / "full.txt", "text");
    struct { const char* m_What; std::filesystem::path m_File; short m_Mode; int m_MaxBytes; } cases[] = {
        {"empty file", folder / "empty.txt", FILELOAD_TEXT, 0},
        {"empty file, raw", folder / "empty.txt", FILELOAD_RAW, 0},
        {"missing file", folder / "missing.txt", FILELOAD_TEXTCHECK, 0},
        {"a folder", folder.Path(), FILELOAD_RAW, 0},
        {"a negative limit leaves nothing to read", folder / "full.txt", FILELOAD_RAW, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_What);
        EXPECT_EQ(Load(c.m_File, c.m_Mode, c.m_MaxBytes).m_Result, E_FAIL);
    }
}

TEST(FileBuffer, NamesBecomeUTF8WithTheReadersThresholds)
{
    // The last: a negative character is its low byte.
    const struct { wchar_t m_Character; Bytes m_Bytes; } cases[] = {
        {L'a', "a"}, {wchar_t(0xE9), "\xC3\xA9"}, {wchar_t(0x7FF), "\xE0\x9F\xBF"}, {wchar_t(0xFFFE), "\xEF\xBF\xBE"},
        {wchar_t(0x1F600), "\xF0\x9F\x98\x80"}, {wchar_t(-191), "A"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(int(c.m_Character));
        std::wstring name = L"x";
        name += c.m_Character;
        char path[kFileNameBytes];
        FileNameToUTF8(View(name), path);
        EXPECT_EQ(Bytes(path), "x" + c.m_Bytes);
    }
}

TEST(FileBuffer, LongNamesAreCutToTheRoom)
{
    const struct { std::wstring m_Name; size_t m_Length; } cases[] = {
        {std::wstring(300, L'a'), 254},
        {std::wstring(253, L'a') + L"\u00e9", 253},  // two bytes at 253 don't fit
        {std::wstring(252, L'a') + L"\u20ac", 252},  // but not at 252
        {std::wstring(251, L'a') + L"\U0001F600b", 251}, // the name ends at what doesn't fit
    };
    for (const auto& c : cases) {
        char path[kFileNameBytes];
        FileNameToUTF8(View(c.m_Name), path);
        EXPECT_EQ(std::strlen(path), c.m_Length) << c.m_Name.size();
    }

    // On disk: a 300-character path opens the file named by its first 254 bytes.
    vxtest::TempFolder folder;
    std::string prefix = folder.Path().string() + "/";
    ASSERT_LT(prefix.size(), 200u);
    std::string cut = prefix + std::string(254 - prefix.size(), 'n');
    std::wstring full = Wide(prefix + std::string(300 - prefix.size(), 'n'));
    vxtest::WriteBytes(cut, "hello");
    void* data = nullptr;
    unsigned long size = 0;
    ASSERT_EQ(FileArchiveLoad(View(full), &data, &size, FILELOAD_RAW, 0), S_OK);
    EXPECT_EQ(Bytes(static_cast<char*>(data), size), "hello");
    delete[] static_cast<unsigned char*>(data);
}

int32_t SaveWide(const std::filesystem::path& file, const std::vector<wchar_t>& text, unsigned long size,
                 short append)
{
    std::wstring name = Wide(file.string());
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<wchar_t*>(text.data()));
    return FileArchiveSave(View(name), bytes, size, 1, append);
}

TEST(FileBuffer, SavesWideTextAsSixteenBitUnits)
{
    // m_Before empty: no file yet.
    const struct { const char* m_What; Bytes m_Before; std::vector<wchar_t> m_Text; unsigned long m_Size; short m_Append;
        int32_t m_Result; Bytes m_After; } cases[] = {
        {"new file with a mark", "", {L'A', L'\n'}, 8, 0, S_OK, Bytes("\xFF\xFE" "A\0\n\0", 6)},
        {"above 0xFFFF keeps the low 16 bits", "", {wchar_t(0x1F600)}, 4, 0, S_OK, Bytes("\xFF\xFE\x00\xF6", 4)},
        {"replacing truncates", "old text", {L'A'}, 4, 0, S_OK, Bytes("\xFF\xFE" "A\0", 4)},
        {"appending writes no mark", "old", {L'B'}, 4, 1, S_OK, Bytes("oldB\0", 5)},
        {"under one character: the mark alone, a failure", "", {L'A'}, 3, 0, E_FAIL, "\xFF\xFE"},
        {"under one character, appending: nothing", "old", {L'A'}, 3, 1, E_FAIL, "old"},
    };
    vxtest::TempFolder folder;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_What);
        auto file = folder / "saved.txt";
        std::filesystem::remove(file);
        if (!c.m_Before.empty())
            vxtest::WriteBytes(file, c.m_Before);
        EXPECT_EQ(SaveWide(file, c.m_Text, c.m_Size, c.m_Append), c.m_Result);
        EXPECT_EQ(vxtest::ReadBytes(file), c.m_After);
    }
}

} // namespace
