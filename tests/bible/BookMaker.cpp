#include "bible/BookMaker.h"

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

} // namespace vxtest
