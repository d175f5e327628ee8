#include "persistence/FileReplacement.h"

#include <sys/stat.h>
#include <unistd.h>

CFileReplacement::CFileReplacement(const char* target) : m_Target(target)
{
    // The process number keeps two writers apart; "x" never reuses a stray file.
    m_Temporary = m_Target + ".new~" + std::to_string(long(getpid()));
    m_File = std::fopen(m_Temporary.c_str(), "wbx");
    if (!m_File)
        return;
    // A file written again keeps who may read it.
    struct stat status;
    if (stat(m_Target.c_str(), &status) == 0 && S_ISREG(status.st_mode))
        fchmod(fileno(m_File), status.st_mode & 07777);
}

CFileReplacement::~CFileReplacement()
{
    if (m_File) {
        std::fclose(m_File);
        std::remove(m_Temporary.c_str());
    }
}

bool CFileReplacement::Commit()
{
    if (!m_File)
        return false;
    bool written = !m_Failed && std::fflush(m_File) == 0 && !std::ferror(m_File);
    bool closed = std::fclose(m_File) == 0;
    m_File = nullptr;
    if (written && closed && std::rename(m_Temporary.c_str(), m_Target.c_str()) == 0)
        return true;
    std::remove(m_Temporary.c_str());
    return false;
}
