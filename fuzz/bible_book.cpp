// Any bytes as a Bible book: once as its own file, once as the text block of a packed
// translation's stream with a size that may lie. Every chapter and verse found is then
// walked, singly and as ranges, and every character of what they view is read.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "FuzzTouch.h"

namespace {

const wchar_t* const kNames[] = {L"Ruth", L"1 Samuel", L"", L"1", L"a"};

template <class I> SmartPtr<I> Make(const wchar_t* component)
{
    IID iid = I::Iid();
    auto made = SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(CREFString(component), &iid))));
    if (!made)
        __builtin_trap();
    return made;
}

SmartPtr<IString> Name(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

std::string FuzzFile()
{
    struct stat status;
    std::string folder = stat("/dev/shm", &status) == 0 && S_ISDIR(status.st_mode) ? "/dev/shm" : "/tmp";
    return folder + "/vx-fuzz-bible-book-" + std::to_string(getpid()) + ".bbl";
}

const std::string gFile = FuzzFile();

void RemoveFuzzFile() { std::remove(gFile.c_str()); }

void Walk(IVXBook* book)
{
    Touch(book);
    int chapters = 0;
    book->get_ChapterCount(&chapters);
    auto collection = QueryAs<ISuperCollection>(book);
    for (int c = -1; c <= chapters; ++c) {
        SmartPtr<IUnknown> chapter;
        collection->get_Item(c, chapter.Receive());
        Touch(chapter);
        int verses = 0;
        book->get_VerseCount(c, &verses);
        for (int v = -1; v <= verses; ++v) {
            for (int count : {1, 2, BIBLE_VERSES_TO_END}) {
                SmartPtr<IString> text;
                book->get_Verse(c, v, count, text.Receive());
                Touch(text);
            }
            SmartPtr<IString> header;
            book->Header(header.Receive(), c, v, 3, nullptr);
            Touch(header);
        }
    }
}

// A book named by the stream form, with the given text block and size.
void LoadFromStream(IVXBook* book, const wchar_t* name, const uint8_t* data, size_t size, int32_t length)
{
    auto stream = Make<IFolderStream>(L"FolderStream");
    stream->WriteString(Name(L"UserName"), Name(name));
    stream->WriteString(Name(L"NameInText"), Name(name));
    stream->CreateBlock(Name(L"Text"));
    if (size > 0)
        stream->Write(data, int(size), 0);
    stream->WriteData(Name(L"Size"), &length, 4, 0);
    QueryAs<IDataPersist>(book)->Load(stream, 0);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    std::atexit(RemoveFuzzFile);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2 || size > 64 * 1024)
        return 0;
    const wchar_t* name = kNames[data[0] % (sizeof(kNames) / sizeof(kNames[0]))];
    int32_t claimed = data[1] & 1 ? int32_t(size) : int32_t(data[1]) * 64 - 4096;
    data += 2;
    size -= 2;

    FILE* file = std::fopen(gFile.c_str(), "wb");
    if (!file)
        return 0;
    if (size > 0)
        std::fwrite(data, 1, size, file);
    std::fclose(file);
    auto fromFile = Make<IVXBook>(L"VXBibleBook");
    QueryAs<IUIPropInterrogateEx>(fromFile.get())->ControlEx(BOOK_PROP_NAMEINTEXT, Name(name));
    auto archive = QueryAs<IFileArchive>(fromFile.get());
    archive->put_Filename(Name(std::wstring(gFile.begin(), gFile.end()).c_str()));
    archive->Load();
    Walk(fromFile);

    auto fromStream = Make<IVXBook>(L"VXBibleBook");
    LoadFromStream(fromStream, name, data, size, claimed);
    Walk(fromStream);
    // A second read appends a second index over a new text; the first stays readable.
    LoadFromStream(fromStream, name, data, size, claimed);
    Walk(fromStream);
    return 0;
}
