// Songs as the host handles them: read from a file the user named, checked on the
// way, printed for a person, and written without losing the old file.
#pragma once
#include <string>

#include "host/Host.h"

// A song that is cleared when it goes: its verses point back at it.
class HostSong {
public:
    HostSong();
    ~HostSong();
    HostSong(const HostSong&) = delete;
    HostSong& operator=(const HostSong&) = delete;

    IVXSong* get() const { return m_Song.get(); }
    explicit operator bool() const { return bool(m_Song); }

private:
    SmartPtr<IVXSong> m_Song;
};

// Reads a text file the user named into wide text, whatever its encoding; false
// with a message naming the file if it is missing, a folder, unreadable or binary.
bool HostReadText(const std::string& file, std::wstring* text, std::string* error);

// False with a message naming the file if the module would spell its path otherwise.
bool HostNameFits(const std::string& file, std::string* error);

// A character that no text file holds: a control character other than a line end
// or a tab. Wide characters from 0x8000 on come negative and are text.
inline bool HostControlCharacter(long c)
{
    return (c >= 0 && c < 32 && c != '\t' && c != '\n' && c != '\r' && c != '\f' && c != '\v') || c == 127;
}

// Loads a song file (".sng" or plain text) through the song's own Load.
bool HostLoadSong(const std::string& file, IVXSong* song, std::string* error);

// Attributes, then each verse: its number, header and footer switches, and text.
void HostPrintSong(IVXSong* song);

// Saves the song as a song file named out; an existing file is kept unless force.
// False with a message if the file was not written as the song holds it.
bool HostWriteSong(IVXSong* song, const std::string& out, bool force, std::string* error);

// The song's plain text, line ends as LF.
std::string HostPlainText(IVXSong* song);
