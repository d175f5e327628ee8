// Any bytes as each form a translation comes in: the bible.ini of a folder of books,
// a packed .tBL file, an XML Bible and an HTML Bible to be cut into books. Whatever
// loads is walked book by book, chapter by chapter.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace fs = std::filesystem;

namespace {

fs::path gFolder;

SmartPtr<IString> Name(const std::wstring& text) { return SmartPtr<IString>::Adopt(ISCreate(text.c_str())); }

void Write(const fs::path& file, const uint8_t* data, size_t size)
{
    FILE* out = std::fopen(file.c_str(), "wb");
    if (!out)
        return;
    if (size > 0)
        std::fwrite(data, 1, size, out);
    std::fclose(out);
}

void Walk(IUnknown* bible)
{
    auto books = QueryAs<INamedCollection>(bible);
    int count = 0;
    if (!books || books->get_Count(&count) < 0)
        return;
    for (int i = 0; i < count && i < 80; ++i) {
        SmartPtr<IUnknown> item;
        books->get_Item(i, item.Receive());
        if (auto file = item.As<IFileArchive>())
            file->Load();
        auto book = item.As<IVXBook>();
        if (!book)
            continue;
        int chapters = 0;
        book->get_ChapterCount(&chapters);
        for (int c = 0; c < chapters && c < 200; ++c) {
            int verses = 0;
            book->get_VerseCount(c, &verses);
            for (int v : {0, verses - 1}) {
                SmartPtr<IString> text;
                book->get_Verse(c, v, BIBLE_VERSES_TO_END, text.Receive());
                SmartPtr<IString> header;
                book->Header(header.Receive(), c, v, 1, nullptr);
            }
        }
    }
}

// What a load left in the working folder (the books an HTML Bible is cut into)
// goes, so that runs don't pile files up.
void Tidy()
{
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(gFolder, error)) {
        std::string name = entry.path().filename().string();
        if (name != "_binlinux" && name != "ini")
            fs::remove_all(entry.path(), error);
    }
}

void RemoveFolder()
{
    std::error_code error;
    fs::remove_all(gFolder, error); // the link to the modules goes, not the modules
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // The modules are opened relative to the working folder, and an HTML Bible is
    // cut into files there: work in a folder of our own that links to them.
    fs::path modules = fs::absolute("_binlinux");
    gFolder = fs::temp_directory_path() / ("vx-fuzz-bible-forms-" + std::to_string(getpid()));
    fs::create_directories(gFolder / "ini");
    fs::create_directory_symlink(modules, gFolder / "_binlinux");
    fs::current_path(gFolder);
    const char ruth[] = "Ruth 1\r\n1:\tIn the days when the judges ruled.\r\n2:\tAnd the name of the man.\r\n";
    const char jude[] = "Jude 1\r\n1:\tJude, the servant of Jesus Christ.\r\n";
    Write(gFolder / "ini" / "Ruth.bbl", reinterpret_cast<const uint8_t*>(ruth), sizeof ruth - 1);
    Write(gFolder / "ini" / "Jude.bbl", reinterpret_cast<const uint8_t*>(jude), sizeof jude - 1);
    std::atexit(RemoveFolder);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1 || size > 64 * 1024)
        return 0;
    static const char* const kFiles[] = {"ini/bible.ini", "bible.tBL", "bible.xml", "bible.htm"};
    int form = data[0] % 4;
    fs::path file = gFolder / kFiles[form];
    Write(file, data + 1, size - 1);
    IID iid = IFileArchive::Iid();
    auto bible = SmartPtr<IFileArchive>::Adopt(
        static_cast<IFileArchive*>(static_cast<void*>(CreateObject(CREFString(L"VXBible"), &iid))));
    if (!bible)
        __builtin_trap();
    fs::path opened = form == 0 ? gFolder / "ini" : file;
    bible->put_Filename(Name(opened.wstring()));
    bible->Load();
    Walk(bible);
    bible.Clear();
    Tidy();
    return 0;
}
