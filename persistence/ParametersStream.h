// A parameter collection in the four stream forms: XML attributes and elements,
// the XML form of objects that persist themselves, a folder stream, and one line
// of comma-separated values. The forms work on any IParameters through its own
// operations, so the framework's collections and the module's steps share them.
#pragma once
#include <functional>

#include "runtime/VXCore.h"

// Bits of the mode of the stream forms.
constexpr int PARAMS_WITHNAMES = 0x10000;
constexpr int PARAMS_COMPACT = 0x800000;
constexpr int PARAMS_REPLACE = 0x1000000;
constexpr int PARAMS_BYNAME = 0x2000000;

// Item flags that the stream forms read.
constexpr int PARAMFLAG_TYPEMASK = 0xF;
constexpr int PARAMFLAG_FILENAME = 0x6;
constexpr int PARAMFLAG_KEEPPATH = 0x30;
constexpr int PARAMFLAG_DROPDESCRIPTOR = 0x40;
constexpr int PARAMFLAG_INSTALLRELATIVE = 0x100;
constexpr int PARAMFLAG_NOTCOMPACT = 0x40000;
constexpr int PARAMFLAG_NEVERSAVED = 0x4000000;
constexpr int PARAMFLAG_TRANSIENT = 0x8000000;

// Empties the collection under its lock; the loading forms call it in replace mode.
using ParamsRemoveAll = std::function<void()>;

int32_t ParamsSaveXML(IParameters* self, IDataStream* stream, int mode);
int32_t ParamsLoadXML(IParameters* self, IDataStream* stream, int mode, const ParamsRemoveAll& removeAll);
int32_t ParamsSaveXMLUnk(IParameters* self, IDataStream* stream, int mode);
int32_t ParamsLoadXMLUnk(IParameters* self, IDataStream* stream, int mode, const ParamsRemoveAll& removeAll);
int32_t ParamsSaveCSV(IParameters* self, IDataStream* stream, int mode);
int32_t ParamsSaveFolderStream(IParameters* self, IDataStream* stream, int mode);
int32_t ParamsLoadFolderStream(IParameters* self, IDataStream* stream, int mode, const ParamsRemoveAll& removeAll);

// What the folder form keeps of a file name item: mapped, below the install path
// relative, or as it stands. Returns the value to write.
SmartPtr<IVariant> ParamsPathForSaving(IVariant* value, int* flags);
// The way back: unmapped, or absolute from the install path; "\" becomes "/" when
// `slashes` says so.
SmartPtr<IVariant> ParamsPathFromLoading(IVariant* value, int flags, bool replaceOnlyIfUnresolved);
