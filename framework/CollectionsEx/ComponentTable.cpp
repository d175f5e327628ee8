#include "framework/CollectionsEx/ComponentTable.h"

#include <cwchar>
#include <iterator>

namespace {

// One line per component. The module's own six are listed like any other.
const ComponentLocation kComponents[] = {
    {L"VXBible", L"VXCore"},
    {L"VXBibleBook", L"VXCore"},
    {L"VXSong", L"VXCore"},
    {L"VXSongConvert", L"VXCore"},
    {L"VXSongVerse", L"VXCore"},
    {L"VXVisualText", L"VXCore"},
    {L"CreatableString", L"Collections"},
    {L"Variant", L"Collections"},
    {L"ParametersCreatable", L"Collections"},
    {L"SimpleCollection", L"Collections"},
    {L"StringCollection", L"Collections"},
    {L"SuperCollection", L"Collections"},
    {L"GlobalComponentCollection", L"CollectionsEx"},
    {L"ComponentString", L"CollectionsEx"},
    {L"FolderStream", L"CollectionsEx"},
    {L"FileInfo", L"CollectionsEx"},
    {L"XMLStream", L"CollectionsEx"},
    {L"XMLStreamEx", L"CollectionsEx"},
    {L"DataStream", L"CollectionsEx"},
    {L"Registry", L"CollectionsEx"},
    {L"ActiveWorkspace", L"CollectionsEx"},
    {L"INIFile", L"CollectionsEx"},
    {L"ASCIIStream", L"CollectionsEx"},
    {L"VXTextReference", L"CollectionsEx"},
    {L"VXRenderStyle", L"Renderer"},
    {L"UIDefault", L"Renderer"},
    {L"StringTable", L"CollectionsEx"},
    {L"VXRenderer", L"Renderer"},
    {L"VXText", L"Renderer"},
    {L"InputParameter", L"Collections"},
    {L"InputParameters", L"Collections"},
    {L"CSVStream", L"CollectionsEx"},
    {L"XMLFile", L"CollectionsEx"},
    {L"VXBook", L"VXBook"},
    {L"MessageWindow", L"UI"},
    {L"UITree", L"UI"},
    {L"UIVerbCollection", L"UI"},
    {L"UIManagerCollection", L"UI"},
    {L"UIUtils", L"UI"},
    {L"QIFFileEx", L"Renderer"},
    {L"UIPropertyPageCollection", L"UI"},
};

} // namespace

const ComponentLocation* ComponentTable(int* count)
{
    *count = int(std::size(kComponents));
    return kComponents;
}

const wchar_t* ComponentModule(tagREFString component)
{
    for (const ComponentLocation& location : kComponents) {
        size_t length = std::wcslen(location.m_Component);
        if (component.m_Length >= 0 && length == size_t(component.m_Length) &&
            std::wmemcmp(location.m_Component, component.m_Buffer, length) == 0)
            return location.m_Module;
    }
    return nullptr;
}
