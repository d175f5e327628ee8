// Books made for tests: the names and the text go in through the packed translation's
// stream form, as a Bible hands a book its content.
#pragma once
#include <string>
#include <vector>

#include "support/Fixture.h"
#include "support/Samples.h"

namespace vxtest {

struct BookContent {
    std::wstring userName;
    std::wstring nameInText;
    std::wstring translation;
    std::wstring text;
};

// A loaded book with that content; empty if the modules can't make one.
SmartPtr<IVXBook> MakeBook(const BookContent& content);

// The book's text in its stream form: UserName, NameInText, Translation, the text's
// 16-bit units in the block "Text", and its size.
SmartPtr<IFolderStream> BookStream(const BookContent& content);

// A book read from its own file, named through its properties as a translation names it.
SmartPtr<IVXBook> LoadBookFile(const std::string& file, const std::wstring& nameInText);

// A Bible of that folder or file, named but not yet read.
SmartPtr<IFileArchive> OpenBible(const std::filesystem::path& path);

// The text of a verse or range, or "<fail>" with the result when there is none.
std::wstring Verse(IVXBook* book, int chapter, int verse, int count, int32_t* result = nullptr);

// The text of a sample book's verse as the source has it: "N:\ttext" lines under
// "NAME CHAPTER" headings, read straight from the file's UTF-16.
std::wstring SampleVerse(const std::string& file, int chapter, int verse);

// Every verse line of a sample book with its zero-based chapter, in file order.
struct SampleLine {
    int chapter;
    std::wstring line;
};
std::vector<SampleLine> SampleLines(const std::string& file);

} // namespace vxtest
