// The application's system menu, switched on for one run of the host: objects offer
// their own menus (verbs) only where the registry's "SystemMenu" of "UI" says so,
// and a command that works through those menus must not depend on how the user's
// registry is set. The user's file is left as it is: the run reads a copy.
#pragma once
#include <string>

class HostSystemMenu {
public:
    HostSystemMenu() = default;
    ~HostSystemMenu();
    HostSystemMenu(const HostSystemMenu&) = delete;
    HostSystemMenu& operator=(const HostSystemMenu&) = delete;

    // Writes the copy with the menu on and points VX_REGISTRY at it; false with a
    // message when the copy can't be written.
    bool On(std::string* error);

private:
    std::string m_Copy;
    std::string m_Before;
    bool m_HadBefore = false;
};
