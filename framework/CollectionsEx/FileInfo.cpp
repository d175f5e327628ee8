#include "framework/CollectionsEx/FileInfo.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <cwctype>

#include "runtime/ValueConversion.h"

namespace {

constexpr wchar_t kAuthor[] = L"Author";
constexpr wchar_t kTime[] = L"Time";

// The name the user logged in with, or the account's, or the program's own.
std::wstring LoginName()
{
    char name[256] = {};
    if (getlogin_r(name, sizeof(name)) != 0 || !name[0]) {
        name[0] = '\0';
        struct passwd entry;
        struct passwd* found = nullptr;
        char buffer[1024];
        if (getpwuid_r(geteuid(), &entry, buffer, sizeof(buffer), &found) == 0 && found && found->pw_name)
            std::snprintf(name, sizeof(name), "%s", found->pw_name);
    }
    if (!name[0])
        return L"vxcore";
    // Login names are ASCII on any system that the application runs on.
    std::wstring wide;
    for (const char* c = name; *c; ++c)
        wide += wchar_t(static_cast<unsigned char>(*c));
    return wide;
}

bool SameKey(tagREFString name, const wchar_t* key)
{
    CREFString view(name);
    return view.CompareI(CREFString(key), 0) == 0;
}

// Seconds written as decimal text; false for anything else.
bool ParseSeconds(CREFString text, int64_t* seconds)
{
    std::wstring digits;
    for (int32_t i = 0; i < text.m_Length; ++i)
        if (!std::iswspace(text.At(i)))
            digits += text.At(i);
    if (digits.empty())
        return false;
    wchar_t* end = nullptr;
    long long value = std::wcstoll(digits.c_str(), &end, 10);
    if (!end || *end)
        return false;
    *seconds = value;
    return true;
}

} // namespace

int32_t CFileInfo::FinalConstruct()
{
    m_Author = LoginName();
    return S_OK;
}

int32_t CFileInfo::get_Author(IString** author)
{
    if (!author)
        return E_POINTER;
    *author = ISCreate(CREFString(m_Author.data(), int32_t(m_Author.size())));
    return *author ? S_OK : E_FAIL;
}

int32_t CFileInfo::put_Author(tagREFString author)
{
    if (author.m_Length > 0 && author.m_Buffer)
        m_Author.assign(author.m_Buffer, size_t(author.m_Length));
    else
        m_Author.clear();
    return S_OK;
}

int32_t CFileInfo::get_Time(int64_t* seconds)
{
    if (!seconds)
        return E_POINTER;
    *seconds = m_Time;
    return S_OK;
}

int32_t CFileInfo::put_Time(int64_t seconds)
{
    m_Time = seconds;
    return S_OK;
}

int32_t CFileInfo::Save(IDataStream* stream, int /*flags*/)
{
    if (!stream)
        return E_POINTER;
    if (m_Time == 0)
        m_Time = int64_t(std::time(nullptr));
    auto author = SmartPtr<IString>::Adopt(ISCreate(CREFString(m_Author.data(), int32_t(m_Author.size()))));
    auto authorKey = SmartPtr<IString>::Adopt(ISCreate(kAuthor));
    auto timeKey = SmartPtr<IString>::Adopt(ISCreate(kTime));
    if (auto xml = QueryAs<IXMLStream>(stream)) {
        std::wstring digits = std::to_wstring(static_cast<long long>(m_Time));
        auto time = SmartPtr<IString>::Adopt(ISCreate(digits.c_str()));
        xml->PutAttribute(authorKey, 0, author, 0);
        xml->PutAttribute(timeKey, 0, time, 0);
        return S_OK;
    }
    if (auto folder = QueryAs<IFolderStream>(stream)) {
        folder->WriteString(authorKey, author);
        folder->WriteData(timeKey, &m_Time, int(sizeof(m_Time)), 0);
        return S_OK;
    }
    return E_NOINTERFACE;
}

void CFileInfo::LoadXML(IXMLStream* xml)
{
    // A stream that never ends its values still ends the walk.
    tagREFString name{0, nullptr};
    for (int step = 0; step < 4096 && xml->NextAttribute(&name) >= 0; ++step) {
        bool author = SameKey(name, kAuthor);
        bool time = SameKey(name, kTime);
        // Fetching a value is what moves the walk on, so every value is fetched.
        tagREFString value{0, nullptr};
        SmartPtr<IUnknown> element;
        if (xml->GetAttribute(name, &value, element.Receive(), 0) < 0)
            break;
        if (!author && !time)
            continue;
        CREFString text = value.m_Length > 0 ? CREFString(value) : CREFString(element.get());
        if (author)
            put_Author(text);
        else
            ParseSeconds(text, &m_Time);
    }
}

void CFileInfo::LoadFolder(IFolderStream* folder)
{
    auto authorKey = SmartPtr<IString>::Adopt(ISCreate(kAuthor));
    auto timeKey = SmartPtr<IString>::Adopt(ISCreate(kTime));
    auto author = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (author && folder->ReadString(authorKey, author) >= 0)
        put_Author(CREFString(author.get()));
    int64_t seconds = m_Time;
    if (folder->ReadData(timeKey, &seconds, int(sizeof(seconds)), 0) >= 0)
        m_Time = seconds;
}

int32_t CFileInfo::Load(IDataStream* stream, int /*flags*/)
{
    if (!stream)
        return E_POINTER;
    if (auto xml = QueryAs<IXMLStream>(stream)) {
        LoadXML(xml);
        return S_OK;
    }
    if (auto folder = QueryAs<IFolderStream>(stream)) {
        LoadFolder(folder);
        return S_OK;
    }
    return E_NOINTERFACE;
}
