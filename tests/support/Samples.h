// The files under the source tree's samples folder, as both the module and the host suites read them.
#pragma once
#include <string>

namespace vxtest {

inline std::string SamplePath(const std::string& relative)
{
    return std::string(VX_SOURCE_DIR) + "/samples/" + relative;
}

} // namespace vxtest
