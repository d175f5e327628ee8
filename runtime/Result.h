// Result codes shared by every module: callers test for negative, not for zero.
#pragma once
#include <cstdint>

constexpr int32_t S_OK = 0;
constexpr int32_t S_FALSE = 1;
constexpr int32_t E_FAIL = int32_t(0x80004005u);
constexpr int32_t E_NOTIMPL = int32_t(0x80004001u);
constexpr int32_t E_NOINTERFACE = int32_t(0x80004002u);
constexpr int32_t E_POINTER = int32_t(0x80004003u);
constexpr int32_t E_INVALIDARG = int32_t(0x80070057u);
constexpr int32_t E_NOTRUNNING = int32_t(0x80040010u);

inline bool FAILED(int32_t result) { return result < 0; }
inline bool SUCCEEDED(int32_t result) { return result >= 0; }
