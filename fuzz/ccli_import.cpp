// A CCLI paste of any shape: the import must end, keep every view inside the
// paste, and make a ".sng" name whenever the song had a name and the paste a title.
#include <cstdint>
#include <vector>

#include "persistence/TextLine.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

void Check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 32 * 1024)
        return 0;
    IID iid = IID_IVXSong;
    auto song = SmartPtr<IVXSong>::Adopt(
        static_cast<IVXSong*>(static_cast<void*>(CreateObject(REFLiteral(L"VXSong"), &iid))));
    Check(bool(song));
    // Each byte widened; 0xFD stands for the replacement character of a lost sign.
    std::vector<wchar_t> text(size);
    for (size_t k = 0; k < size; ++k)
        text[k] = data[k] == 0xFD ? wchar_t(0xFFFD) : wchar_t(data[k]);
    auto archive = song.As<IFileArchive>();
    auto old = SmartPtr<IString>::Adopt(ISCreate(L"/songs/paste.txt"));
    archive->put_Filename(old);
    CREFString paste(text.data(), int32_t(text.size()));
    Check(song->SetVerses(paste, SONGVERSES_CCLI) == S_OK);

    SmartPtr<IString> name;
    archive->get_Filename(name.Receive());
    CREFString file(name.get());
    TextTrimLeft(paste);
    if (paste.m_Length > 0) {
        Check(file.m_Length >= 11);
        CREFString end(file.m_Buffer + file.m_Length - 4, 4);
        Check(end.CompareI(REFLiteral(L".sng"), 0) == S_OK);
        Check(CREFString(file.m_Buffer, 7).CompareI(REFLiteral(L"/songs/"), 0) == S_OK);
    }
    SmartPtr<IString> printed;
    Check(song->GetText(printed.Receive(), 7) == S_OK);
    song.As<ISuperCollection>()->Clear();
    return 0;
}
