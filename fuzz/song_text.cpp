// A song read from any text: the first byte picks the road (the text handed to
// SetVerses, or the bytes read as a song file by Load, which also reads the
// attribute block); what was read is printed in the file form and read again.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

void Check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

template <class I> SmartPtr<I> Make(tagREFString component)
{
    IID iid = I::Iid();
    auto made = SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(component, &iid))));
    Check(bool(made));
    return made;
}

int VerseCount(IVXSong* song)
{
    int count = -1;
    QueryAs<IVXBook>(song)->get_VerseCount(0, &count);
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0 || size > 32 * 1024)
        return 0;
    auto song = Make<IVXSong>(REFLiteral(L"VXSong"));
    if (data[0] & 1) {
        static const std::string file = "/tmp/fuzz_song_text." + std::to_string(long(getpid())) + ".sng";
        FILE* out = std::fopen(file.c_str(), "wb");
        Check(out != nullptr);
        std::fwrite(data + 1, 1, size - 1, out);
        std::fclose(out);
        auto name = SmartPtr<IString>::Adopt(ISCreate(file.data(), int(file.size())));
        auto archive = song.As<IFileArchive>();
        archive->put_Filename(name);
        Check(archive->Load() == S_OK);
    } else {
        // Each byte widened, a few high values mixed in so that odd characters turn up.
        std::vector<wchar_t> text(size - 1);
        for (size_t k = 1; k < size; ++k)
            text[k - 1] = data[k] >= 0xF8 ? wchar_t(0xFEFF + (data[k] - 0xF8) * 0x10000) : wchar_t(data[k]);
        Check(song->SetVerses(CREFString(text.data(), int32_t(text.size())), SONGVERSES_PARSE) == S_OK);
    }
    for (short flags : {short(0), short(7)}) {
        SmartPtr<IString> printed;
        Check(song->GetText(printed.Receive(), flags) == S_OK && printed);
        // The printed text read back as the song's own: the scan works on a copy.
        wchar_t* buffer = nullptr;
        int length = 0;
        printed->GetBuffer(&buffer, &length);
        Check(song->SetVerses(CREFString(buffer, length), SONGVERSES_PARSE) == S_OK);
        Check(VerseCount(song) >= 0);
    }
    // Verses point back at their song: clearing lets both go.
    song.As<ISuperCollection>()->Clear();
    return 0;
}
