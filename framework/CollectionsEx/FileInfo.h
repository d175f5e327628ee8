// "FileInfo": who wrote a file and when, kept under the key "Info" of a folder file
// and as two values of an XML element.
#pragma once
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CFileInfo : public CObject<CFileInfo>, public IObjectInfoImpl<CFileInfo>, public IFileInfo, public IDataPersist {
public:
    static constexpr wchar_t kObjectName[] = L"FileInfo";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IFileInfo>, Entry<IDataPersist>>;

    // The author starts as the user's login name.
    int32_t FinalConstruct() override;

    int32_t get_Author(IString** author) override;
    int32_t put_Author(tagREFString author) override;
    int32_t get_Time(int64_t* seconds) override;
    int32_t put_Time(int64_t seconds) override;

    // A time never set becomes the time of the save. "Author" and "Time" go as values
    // of an XML stream, or as a string and 8 bytes of a folder stream.
    int32_t Save(IDataStream* stream, int flags) override;
    // Reads what is there; a value that is missing keeps what the object held.
    int32_t Load(IDataStream* stream, int flags) override;

private:
    void LoadXML(IXMLStream* xml);
    void LoadFolder(IFolderStream* folder);

    std::wstring m_Author;
    int64_t m_Time = 0;
};
