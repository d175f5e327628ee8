#include "framework/UI/MessageWindow.h"

#include <unistd.h>

#include "runtime/UTF8Write.h"

namespace {

void WriteAll(int descriptor, const std::string& bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t written = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (written <= 0)
            return;
        done += size_t(written);
    }
}

} // namespace

int32_t CMessageWindow::FinalConstruct()
{
    if (::isatty(STDERR_FILENO))
        m_Descriptor = STDERR_FILENO;
    return S_OK;
}

void CMessageWindow::FinalRelease() { Wipe(); }

void CMessageWindow::Wipe()
{
    if (m_Shown)
        WriteAll(m_Descriptor, "\r\x1b[K");
    m_Shown = false;
}

int32_t CMessageWindow::Show(IString* text)
{
    if (m_Descriptor < 0)
        return S_OK;
    Wipe();
    CREFString view(text);
    if (view.IsEmpty())
        return S_OK;
    std::string bytes("\r");
    // One line: a line break in the text would leave a line behind that the wipe misses.
    for (int32_t i = 0; i < view.m_Length; ++i) {
        wchar_t c = view.m_Buffer[i];
        wchar_t shown = (c == L'\r' || c == L'\n' || c == L'\t') ? L' ' : c;
        UTF8Append(bytes, &shown, 1);
    }
    WriteAll(m_Descriptor, bytes);
    m_Shown = true;
    return S_OK;
}
