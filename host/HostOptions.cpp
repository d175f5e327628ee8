#include "host/HostOptions.h"

#include <algorithm>

#include "host/HostPrint.h"

bool HostParseOptions(const Arguments& arguments, HostOptions* options, std::string* error, const Arguments& valued,
                      const Arguments& flags)
{
    auto known = [](const Arguments& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--force") {
            options->m_Force = true;
        } else if (argument == "--out") {
            if (i + 1 >= arguments.size() || arguments[i + 1].empty()) {
                *error = "--out needs a file";
                return false;
            }
            options->m_Out = arguments[++i];
        } else if (known(flags, argument)) {
            options->m_Own[argument] = "";
        } else if (known(valued, argument)) {
            if (i + 1 >= arguments.size() || arguments[i + 1].empty()) {
                *error = argument + " needs a value";
                return false;
            }
            options->m_Own[argument] = arguments[++i];
        } else if (argument.size() > 1 && argument[0] == '-' && argument != "-") {
            *error = "unknown option " + argument;
            return false;
        } else {
            options->m_Positional.push_back(argument);
        }
    }
    return true;
}

int HostBadUsage(const std::string& message)
{
    HostErr() << "vxhost: " << message << '\n';
    return 2;
}
