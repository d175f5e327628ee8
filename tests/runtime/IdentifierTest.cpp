// Identifiers computed from names: two modules built apart must agree byte for byte.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "runtime/IID.h"

namespace {

std::string Bytes(const IID& iid)
{
    unsigned char raw[16];
    std::memcpy(raw, &iid, 16);
    char hex[16 * 3 + 1];
    for (int i = 0; i < 16; ++i)
        std::snprintf(hex + 3 * i, 4, "%02X ", raw[i]);
    return std::string(hex, 16 * 3 - 1);
}

TEST(Identifier, BytesFromNames)
{
    const std::string zeros11 = " 00 00 00 00 00 00 00 00 00 00 00";
    struct Case { const char* name; std::string bytes; } cases[] = {
        {"", "00 00 00 00 00" + zeros11},
        {"A", "01 00 00 00 00" + zeros11},
        {"AB", "41 00 00 00 00" + zeros11},
        // "4" is six bits wide: its top bit is ORed into the next field, not carried.
        {"4", "20 00 00 00 00" + zeros11},
        {"4A", "20 00 00 00 00" + zeros11},
        {"IString", "69 52 99 DC 01" + zeros11},
        {"ICurve2D", "69 54 69 8B 27" + zeros11},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Bytes(__IIDOfc(c.name)), c.bytes) << c.name;
}

TEST(Identifier, Collisions)
{
    struct Case { const char* a; const char* b; bool equal; } cases[] = {
        {"ab", "AB", true},
        {"IString", "istring", true},
        {"I5", "I_", true},                                          // both code 27
        {"ICreatableSimpleCollection", "ICreatableSimpleCollectioX", true}, // 26th character lost
        {"ICreatableSimpleCollectio", "ICreatableSimpleCollectiX", false},
        {"IString", "IStrinG2", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(__IIDOfc(c.a) == __IIDOfc(c.b), c.equal) << c.a << " / " << c.b;
    EXPECT_TRUE(__IIDOfc("") == IID_NULL);
}

TEST(Identifier, TableIsComputedAndDistinct)
{
    int count = 0;
    const IIDTableEntry* table = IIDTable(&count);
    ASSERT_GE(count, 82);
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(*table[i].m_Iid == __IIDOfc(table[i].m_Name)) << table[i].m_Name;
        EXPECT_FALSE(*table[i].m_Iid == IID_IUnknown) << table[i].m_Name;
        for (int j = i + 1; j < count; ++j)
            EXPECT_FALSE(*table[i].m_Iid == *table[j].m_Iid) << table[i].m_Name << " = " << table[j].m_Name;
    }
    EXPECT_EQ(Bytes(IID_IUnknown), "00 00 00 00 00 00 00 00 C0 00 00 00 00 00 00 46");
    // The leading underscore of an event interface is part of its name.
    EXPECT_TRUE(IID__IUIRefreshEvent == __IIDOfc("_IUIRefreshEvent"));
}

} // namespace
