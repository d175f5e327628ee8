// A folder of songs searched the way a song list searches: every song file under
// it, each asked whether it matches.
#pragma once
#include <string>
#include <vector>

// The song files (".sng", ".txt", any case) under folder and its subfolders, as
// paths relative to folder, in byte order. False with a message if folder is none.
bool HostSongFiles(const std::string& folder, std::vector<std::string>* files, std::string* error);

// The files of the list that match query (UTF-8), in the list's order. A file that is no
// readable text is skipped with a warning on standard error; the search goes on.
std::vector<std::string> HostFindSongs(const std::string& folder, const std::vector<std::string>& files,
                                       const std::string& query);
