// A book's text to and from its own ".bbl" file and a packed translation's folder stream.
#include <cstdint>

#include "bible/VXBibleBook.h"
#include "persistence/FileBuffer.h"
#include "persistence/LargeBuffer.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IString> Key(const wchar_t* name) { return SmartPtr<IString>::Adopt(ISCreate(name)); }

// A new string filled from the stream's value of that name; empty where there is none.
SmartPtr<IString> ReadName(IFolderStream* folder, const wchar_t* name)
{
    auto value = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (value)
        folder->ReadString(Key(name), value);
    return SmartPtr<IString>(value.get());
}

} // namespace

int32_t CVXBibleBook::Load()
{
    // A book is read once; callers ignore the refusal of a second read.
    if (m_HasFile)
        return E_FAIL;
    RetireText();
    void* data = nullptr;
    unsigned long length = 0;
    int32_t result = FileArchiveLoad(CREFString(m_Filename.get()), &data, &length, FILELOAD_TEXT, 0);
    if (result < 0)
        return result;
    m_Text = static_cast<wchar_t*>(data);
    m_TextLength = int32_t(length);
    SetBufferPtrs();
    m_Modified = 0;
    m_HasFile = 1;
    return result;
}

int32_t CVXBibleBook::Save()
{
    // The text goes back as it was read; the index is rebuilt from it on reading.
    return FileArchiveSave(CREFString(m_Filename.get()), reinterpret_cast<unsigned char*>(m_Text),
                           (unsigned long)(m_TextLength > 0 ? m_TextLength : 0) * 4, 1, 0);
}

int32_t CVXBibleBook::Save(IDataStream* stream, int)
{
    auto folder = QueryAs<IFolderStream>(stream);
    if (!folder)
        return S_OK;
    // A book that hasn't been read is read now.
    Load();
    folder->WriteString(Key(L"UserName"), m_UserName);
    folder->WriteString(Key(L"NameInText"), m_NameInText);
    folder->WriteString(Key(L"Translation"), m_Translation);
    folder->CreateBlock(Key(L"Text"));
    // 16 bits a character, least significant byte first; what lies above U+FFFF is lost.
    for (int32_t i = 0; i < m_TextLength; ++i) {
        uint32_t c = uint32_t(m_Text[i]);
        unsigned char unit[2] = {static_cast<unsigned char>(c & 0xFF), static_cast<unsigned char>((c >> 8) & 0xFF)};
        folder->Write(unit, 2, 0);
    }
    folder->WriteData(Key(L"Size"), &m_TextLength, 4, 0);
    return S_OK;
}

int32_t CVXBibleBook::Load(IDataStream* stream, int)
{
    RetireText();
    if (auto folder = QueryAs<IFolderStream>(stream)) {
        m_UserName = ReadName(folder, L"UserName");
        m_NameInText = ReadName(folder, L"NameInText");
        m_Translation = ReadName(folder, L"Translation");
        int32_t size = 0;
        folder->ReadData(Key(L"Size"), &size, 4, 0);
        folder->OpenBlock(Key(L"Text"));
        void* data = nullptr;
        unsigned long bytes = 0;
        folder->GetBuffer(&data, &bytes);
        unsigned long units = data ? bytes / 2 : 0;
        // The written size is trusted only as far as the block reaches.
        if (size < 0)
            size = 0;
        if ((unsigned long)size > units)
            size = int32_t(units);
        // Every element is written below; clearing them first would double the cost.
        m_Text = new wchar_t[size_t(size) + 1];
        LargeBufferAdvise(m_Text, (size_t(size) + 1) * sizeof(wchar_t));
        m_Text[size] = 0;
        m_TextLength = size;
        auto* block = static_cast<const unsigned char*>(data);
        for (int32_t i = 0; i < size; ++i)
            m_Text[i] = wchar_t(block[2 * i] | (unsigned(block[2 * i + 1]) << 8));
    }
    SetBufferPtrs();
    m_Modified = 0;
    m_HasFile = 1;
    return S_OK;
}
