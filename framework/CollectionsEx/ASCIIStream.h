// Turns the wide text of a stream into UTF-8 bytes in another: how an archive that
// asks for a byte encoding writes its XML.
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CASCIIStream : public CObject<CASCIIStream>, public IObjectInfoImpl<CASCIIStream>, public IStreamTransform {
public:
    static constexpr wchar_t kObjectName[] = L"ASCIIStream";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IStreamTransform>>;

    // in and out answer IDataStream; in's buffer holds 4 bytes a character. The text
    // ends at its size or at a zero character, whichever comes first.
    int32_t Transform(IUnknown* in, IUnknown* out, int mode) override;
};
