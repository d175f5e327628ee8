// A small folder Bible written for a test: books whose every verse names itself.
#pragma once
#include <filesystem>

namespace vxtest {

// "Ruth" of three chapters (3, 2 and 4 verses), "Jonah" of two (2 and 2), and the
// flat "Jude" of three verses, in the folder "Test Bible" under parent, which it
// gives back; verse v of chapter c of Ruth reads "v:\tRuth c.v".
std::filesystem::path WriteTestBible(const std::filesystem::path& parent);

} // namespace vxtest
