// What the host writes, through the C library's streams. The C++ streams would cost every
// command their setting up at start, a tenth of a short command's time.
#pragma once
#include <cstdio>
#include <string>
#include <type_traits>

class HostPrint {
public:
    explicit HostPrint(std::FILE* file) : m_File(file) {}

    HostPrint& operator<<(const char* text)
    {
        std::fputs(text, m_File);
        return *this;
    }
    HostPrint& operator<<(const std::string& text)
    {
        std::fwrite(text.data(), 1, text.size(), m_File);
        return *this;
    }
    HostPrint& operator<<(char c)
    {
        std::fputc(c, m_File);
        return *this;
    }
    template <class Number>
        requires(std::is_integral_v<Number> && !std::is_same_v<Number, char> && !std::is_same_v<Number, bool>)
    HostPrint& operator<<(Number number)
    {
        return *this << std::to_string(number);
    }
    void Flush() { std::fflush(m_File); }

private:
    std::FILE* m_File;
};

// Standard output and the error stream.
inline HostPrint& HostOut()
{
    static HostPrint out(stdout);
    return out;
}

inline HostPrint& HostErr()
{
    static HostPrint err(stderr);
    return err;
}

// Everything left on a C stream, standard input above all, as bytes.
inline std::string HostReadAll(std::FILE* file)
{
    std::string bytes;
    char block[1 << 16];
    size_t got = 0;
    while ((got = std::fread(block, 1, sizeof(block), file)) > 0)
        bytes.append(block, got);
    return bytes;
}
