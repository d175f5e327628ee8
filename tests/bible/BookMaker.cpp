#include "bible/BookMaker.h"

#include <fstream>
#include <sstream>

namespace vxtest {

SmartPtr<IFolderStream> BookStream(const BookContent& content)
{
    auto stream = Create<IFolderStream>(L"FolderStream");
    if (!stream)
        return stream;
    stream->WriteString(Str(L"UserName"), Str(content.userName));
    stream->WriteString(Str(L"NameInText"), Str(content.nameInText));
    stream->WriteString(Str(L"Translation"), Str(content.translation));
    stream->CreateBlock(Str(L"Text"));
    std::string units;
    for (wchar_t c : content.text) {
        units += char(c & 0xFF);
        units += char((c >> 8) & 0xFF);
    }
    stream->Write(units.data(), int(units.size()), 0);
    int32_t size = int32_t(content.text.size());
    stream->WriteData(Str(L"Size"), &size, 4, 0);
    return stream;
}

SmartPtr<IVXBook> MakeBook(const BookContent& content)
{
    auto book = Create<IVXBook>(L"VXBibleBook");
    auto stream = BookStream(content);
    if (!book || !stream)
        return {};
    book.As<IDataPersist>()->Load(stream, 0);
    return book;
}

SmartPtr<IFileArchive> OpenBible(const std::filesystem::path& path)
{
    auto bible = Create<IFileArchive>(L"VXBible");
    EXPECT_TRUE(bible);
    bible->put_Filename(Str(path.wstring()));
    return bible;
}

std::wstring Verse(IVXBook* book, int chapter, int verse, int count, int32_t* result)
{
    SmartPtr<IString> text;
    int32_t code = book->get_Verse(chapter, verse, count, text.Receive());
    if (result)
        *result = code;
    if (code < 0)
        return L"<fail>";
    return Text(text);
}

SmartPtr<IVXBook> LoadBookFile(const std::string& file, const std::wstring& nameInText)
{
    auto book = Create<IVXBook>(L"VXBibleBook");
    if (!book)
        return book;
    auto properties = book.As<IUIPropInterrogateEx>();
    properties->ControlEx(BOOK_PROP_USERNAME, Str(nameInText));
    properties->ControlEx(BOOK_PROP_NAMEINTEXT, Str(nameInText));
    auto archive = book.As<IFileArchive>();
    archive->put_Filename(Str(std::wstring(file.begin(), file.end())));
    if (archive->Load() < 0)
        return {};
    return book;
}

std::vector<SampleLine> SampleLines(const std::string& file)
{
    std::ifstream in(file, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    std::string raw = bytes.str();
    std::wstring text;
    for (size_t i = 2; i + 1 < raw.size(); i += 2)
        text += wchar_t(static_cast<unsigned char>(raw[i]) | (static_cast<unsigned char>(raw[i + 1]) << 8));
    std::wstringstream lines(text);
    std::wstring line;
    std::vector<SampleLine> out;
    int chapters = 0;
    while (std::getline(lines, line)) {
        if (line.find(L":\t") == std::wstring::npos)
            ++chapters;
        else
            out.push_back({chapters - 1, line});
    }
    return out;
}

std::wstring SampleVerse(const std::string& file, int chapter, int verse)
{
    for (const SampleLine& found : SampleLines(file))
        if (found.chapter == chapter && found.line.rfind(std::to_wstring(verse + 1) + L":", 0) == 0)
            return found.line;
    return L"<missing>";
}

} // namespace vxtest
