// "DataStream": a plain buffer of bytes. Written by appending; read from a
// position that Skip moves. "CSVStream" is the same buffer: a line of values is
// bytes written through Write, and nothing more is asked of it.
#pragma once
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CDataStream : public CObject<CDataStream>, public IObjectInfoImpl<CDataStream>, public ICSVStream {
public:
    static constexpr wchar_t kObjectName[] = L"DataStream";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IDataStream>, Entry<ICSVStream>>;

    // Copies the bytes, or with null starts empty; reading starts at the first byte.
    int32_t SetBuffer(void* data, int bytes, int mode) override;
    // Moves the read position by `bytes`, either way, within the buffer; S_FALSE
    // when it had to stop at an end.
    int32_t Skip(int bytes, int mode, int reserved) override;
    // The bytes from the read position on.
    int32_t GetBuffer(void** data, unsigned long* size) override;
    int32_t Write(const void* data, int size, int reserved) override;

private:
    // A string for its zero behind the last byte: the buffer can be read as text.
    std::string m_Bytes;
    size_t m_Position = 0;
};
