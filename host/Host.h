// The command-line host: plays the application's part around the modules.
#pragma once
#include <string>
#include <vector>

#include "runtime/VXCore.h"

using Arguments = std::vector<std::string>;

// One job a user has: "vxhost <noun> <verb> [args]".
struct HostCommand {
    const char* m_Noun;
    const char* m_Verb;
    const char* m_Usage;   // the arguments, for help
    const char* m_Summary; // one line
    int (*m_Run)(const Arguments& arguments);
};

// The commands of each noun, defined with the noun's code. A command whose verb
// is empty takes every argument after its noun.
const std::vector<HostCommand>& SongCommands();
const std::vector<HostCommand>& DemoCommands();
const std::vector<HostCommand>& BibleCommands();
const std::vector<HostCommand>& BibleConvertCommands();
const std::vector<HostCommand>& BibleTranslationCommands();
const std::vector<HostCommand>& BibleWalkCommands();
const std::vector<HostCommand>& BibleSearchCommands();

// Prints the verses of a song file; the exit status.
int ShowSongFile(const std::string& file);

// Prints to standard error and gives the exit status of a failed command.
int HostFail(const std::string& message);

// A new object of a component as interface I; empty if the installation lacks it.
template <class I> SmartPtr<I> HostCreate(const wchar_t* component);

IUnknown* HostCreateObject(const wchar_t* component, const IID& iid);

template <class I> SmartPtr<I> HostCreate(const wchar_t* component)
{
    return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(HostCreateObject(component, I::Iid()))));
}
