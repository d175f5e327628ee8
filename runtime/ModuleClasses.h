// The creation functions of the module's own classes, each defined beside its class.
#pragma once
#include "runtime/VXCore.h"

int32_t CreateVXSong(void* outer, IID* iid, void** object);
int32_t CreateVXSongVerse(void* outer, IID* iid, void** object);
int32_t CreateVXBibleBook(void* outer, IID* iid, void** object);
int32_t CreateVXSongConvert(void* outer, IID* iid, void** object);
int32_t CreateVXBible(void* outer, IID* iid, void** object);
