// Paths that survive a move of the installation: "[InstallPath]" or "[name]" of a
// user-defined mapping in place of a root, or a path relative to the file that holds it.
#pragma once
#include "runtime/VXCore.h"

int32_t FILENAMEGetAppPath(IString** path);
int32_t FILENAMEGetInstallPath(IString** path);
int32_t FILENAMEMap(IString* path, IString** mapped, short strip);
int32_t FILENAMEUnmap(IString* mapped, IString** path);
int32_t FILENAMECreateRelative(IString* base, IString* path, IString** relative);
int32_t FILENAMECreateAbsolute(IString* base, IString* path, IString** absolute);
int32_t FILENAMECreateAbsolute(IString* path, IString** absolute, int fromApp);
// A value of the registry's "Workspace" section ("AppPath", "CommonPath"...) as a
// new string, empty when there is none; negative when the registry has none.
int32_t ReadWorkspaceValue(const wchar_t* key, IString** path);
