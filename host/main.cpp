// vxhost <noun> <verb> [args]: each command is a job a user has.
#include <clocale>
#include <cstdio>
#include <cstring>

#include "host/Host.h"
#include "host/HostEnvironment.h"
#include "host/HostPrint.h"
#include "runtime/Module.h"

namespace {

// One list per family of commands; a new family adds one line here.
std::vector<const std::vector<HostCommand>*> AllCommands()
{
    return {
        &SongCommands(),
        &DemoCommands(),
        &BibleCommands(),
        &BibleTranslationCommands(),
        &BibleConvertCommands(),
        &BibleWalkCommands(),
        &BibleSearchCommands(),
    };
}

void PrintUsage(const char* noun)
{
    HostOut() << "usage: vxhost <noun> <verb> [arguments]\n"
                 "Runs the text content module of the presentation program, as the program would.\n\n";
    for (const auto* commands : AllCommands()) {
        for (const HostCommand& command : *commands) {
            if (noun && std::strcmp(noun, command.m_Noun) != 0)
                continue;
            HostOut() << "  vxhost " << command.m_Noun;
            if (*command.m_Verb)
                HostOut() << ' ' << command.m_Verb;
            if (*command.m_Usage)
                HostOut() << ' ' << command.m_Usage;
            HostOut() << "\n      " << command.m_Summary << '\n';
        }
    }
    HostOut() << "\n  vxhost --help, vxhost <noun> --help: this text.\n";
}

bool IsHelp(const char* argument) { return std::strcmp(argument, "--help") == 0 || std::strcmp(argument, "-h") == 0; }

} // namespace

int HostFail(const std::string& message)
{
    HostErr() << "vxhost: " << message << '\n';
    return 1;
}

IUnknown* HostCreateObject(const wchar_t* component, const IID& iid)
{
    IID wanted = iid;
    return CreateObject(CREFString(component), &wanted);
}

int main(int argc, char** argv)
{
    HostUseLargePages();
    // Wide character classes follow Unicode, as the application's do.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    if (argc < 2 || IsHelp(argv[1])) {
        PrintUsage(nullptr);
        return argc < 2 ? 2 : 0;
    }
    const char* noun = argv[1];
    bool known = false;
    for (const auto* commands : AllCommands())
        for (const HostCommand& command : *commands)
            known = known || std::strcmp(command.m_Noun, noun) == 0;
    // A command that doesn't exist is a bad command line, not a failed piece of work.
    if (!known) {
        HostFail(std::string("unknown command \"") + noun + "\"; see vxhost --help");
        return 2;
    }
    const HostCommand* nounOnly = nullptr;
    for (const auto* commands : AllCommands())
        for (const HostCommand& command : *commands)
            if (std::strcmp(command.m_Noun, noun) == 0 && !*command.m_Verb)
                nounOnly = &command;
    if (!nounOnly && (argc < 3 || IsHelp(argv[2]))) {
        PrintUsage(noun);
        return argc < 3 ? 2 : 0;
    }
    for (const auto* commands : AllCommands()) {
        for (const HostCommand& command : *commands) {
            bool matches = std::strcmp(command.m_Noun, noun) == 0 &&
                           (!*command.m_Verb || std::strcmp(command.m_Verb, argv[2]) == 0);
            if (!matches)
                continue;
            Arguments arguments(argv + (*command.m_Verb ? 3 : 2), argv + argc);
            for (const std::string& argument : arguments) {
                if (IsHelp(argument.c_str())) {
                    HostOut() << "usage: vxhost " << command.m_Noun << (*command.m_Verb ? " " : "")
                              << command.m_Verb << ' ' << command.m_Usage << "\n" << command.m_Summary << '\n';
                    return 0;
                }
            }
            std::string error;
            if (!HostEnterModuleFolder(&error))
                return HostFail(error);
            int status = command.m_Run(arguments);
            HostOut().Flush();
            return status;
        }
    }
    HostFail(std::string("unknown command \"") + noun + ' ' + argv[2] + "\"; see vxhost " + noun + " --help");
    return 2;
}
