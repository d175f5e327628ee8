#include "framework/CollectionsEx/DataStream.h"

int32_t CDataStream::SetBuffer(void* data, int bytes, int /*mode*/)
{
    if (bytes < 0)
        return E_INVALIDARG;
    if (!data && bytes > 0)
        return E_POINTER;
    if (data)
        m_Bytes.assign(static_cast<const char*>(data), size_t(bytes));
    else
        m_Bytes.clear();
    m_Position = 0;
    return S_OK;
}

int32_t CDataStream::Skip(int bytes, int /*mode*/, int /*reserved*/)
{
    int64_t target = int64_t(m_Position) + bytes;
    int64_t clamped = target < 0 ? 0 : (target > int64_t(m_Bytes.size()) ? int64_t(m_Bytes.size()) : target);
    m_Position = size_t(clamped);
    return clamped == target ? S_OK : S_FALSE;
}

int32_t CDataStream::GetBuffer(void** data, unsigned long* size)
{
    if (!data || !size)
        return E_POINTER;
    *data = m_Bytes.data() + m_Position;
    *size = (unsigned long)(m_Bytes.size() - m_Position);
    return S_OK;
}

int32_t CDataStream::Write(const void* data, int size, int /*reserved*/)
{
    if (size < 0)
        return E_INVALIDARG;
    if (!data && size > 0)
        return E_POINTER;
    if (size > 0)
        m_Bytes.append(static_cast<const char*>(data), size_t(size));
    return S_OK;
}
