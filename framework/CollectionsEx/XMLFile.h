// "XMLFile": an XML file on disk. Its IFileArchive loads the file in whatever
// encoding it is; what was read is then there twice over, sharing one tree: as an
// XML stream (IXMLStream, get_Stream) and as parameters (IParameters), whose
// entries are the children of the file's top element (see XMLParameters.h).
#pragma once
#include "persistence/FileArchiveImpl.h"
#include "runtime/ObjectInfo.h"

class CXMLFile : public CObject<CXMLFile>,
                 public IObjectInfoImpl<CXMLFile>,
                 public IFileArchiveImpl<CXMLFile, IFileArchive>,
                 public IXMLFile {
    // Declared ahead of the table that forwards to them.
    SmartPtr<IXMLStream> m_Stream;
    SmartPtr<IParameters> m_Content;

public:
    static constexpr wchar_t kObjectName[] = L"XMLFile";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<IFileArchiveImpl<CXMLFile, IFileArchive>>, Entry<IXMLFile>,
                              Forward<IXMLStream, &CXMLFile::m_Stream>, Forward<IDataStream, &CXMLFile::m_Stream>,
                              Forward<IParameters, &CXMLFile::m_Content>,
                              Forward<INamedCollection, &CXMLFile::m_Content>>;

    int32_t FinalConstruct() override;
    void FinalRelease() override;

    // IFileArchive: reads the file; a failed load leaves nothing read.
    int32_t Load() override;
    // The file is only read here.
    int32_t Save() override { return E_NOTIMPL; }

    // IXMLFile
    int32_t get_Stream(IXMLStream** stream) override;
};
