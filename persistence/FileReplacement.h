// A whole file is written beside its target and renamed over it when complete, so
// that a failed write leaves the old file, or nothing, and never half a file.
#pragma once
#include <cstdio>
#include <string>

class CFileReplacement {
public:
    // Opens a new file in the target's folder; File() is null if that failed.
    explicit CFileReplacement(const char* target);
    // Not committed: the new file is removed and the target stays as it was.
    ~CFileReplacement();
    CFileReplacement(const CFileReplacement&) = delete;
    CFileReplacement& operator=(const CFileReplacement&) = delete;

    FILE* File() const { return m_File; }
    // Notes a failed write: the commit will then keep the target as it was.
    void Fail() { m_Failed = true; }
    // Closes the new file and renames it over the target; false if any step failed.
    bool Commit();

private:
    std::string m_Target;
    std::string m_Temporary;
    FILE* m_File = nullptr;
    bool m_Failed = false;
};
