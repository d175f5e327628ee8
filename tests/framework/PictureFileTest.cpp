// "QIFFileEx": PNG pictures of each colour type read into the same RGBA pixels,
// and every kind of bad file refused without leaving a picture behind.
#include "framework/Renderer/RecordingCanvas.h"
#include "support/Streams.h"

using namespace vxtest;

namespace {

std::filesystem::path Icon(const char* name) { return std::filesystem::path(VX_SOURCE_DIR) / "icons" / name; }

class PictureFileTest : public ModuleTest {};

TEST_F(PictureFileTest, EachColourTypeGivesRGBAPixels)
{
    // pixel: 0xAABBGGRR
    struct Case { const char* file; int x, y; uint32_t pixel; };
    const Case cases[] = {
        {"VXSong.png", 11, 23, 0xFFA04020u},      // RGBA: the note's head
        {"VXSong.png", 0, 0, 0x00000000u},        // RGBA: transparent ground
        {"VXBible.png", 15, 15, 0xFF3CB4DCu},     // palette, 4 bits: the cross
        {"VXBible.png", 1, 31, 0xFFFFFFFFu},      // palette: the second pixel of a byte
        {"VXBibleBook.png", 15, 15, 0xFF8C8C8Cu}, // grey
        {"VXSongVerse.png", 4, 8, 0xFF282828u},   // grey with alpha
    };
    for (const Case& c : cases) {
        auto picture = Create<IRenderableObject>(L"QIFFileEx");
        ASSERT_EQ(ArchiveLoad(picture, Icon(c.file)), S_OK) << c.file;
        RecordingCanvas canvas;
        CANVASRect rect{7, 9, 64, 48};
        ASSERT_EQ(picture->Render(canvas.Handle(), &rect, nullptr, 0), S_OK);
        ASSERT_EQ(canvas.m_Calls.size(), 1u);
        const RecordingCanvas::Call& call = canvas.m_Calls[0];
        EXPECT_TRUE(call.m_IsPicture && call.m_Rect.left == 7 && call.m_Rect.height == 48);
        ASSERT_EQ(call.m_Picture.m_Width * call.m_Picture.m_Height, 32 * 32);
        ASSERT_EQ(call.m_Picture.m_Pixels.size(), 32u * 32u);
        EXPECT_EQ(call.m_Picture.m_Pixels[size_t(c.y) * 32 + size_t(c.x)], c.pixel) << c.file << " " << c.x;
    }
}

TEST_F(PictureFileTest, BadFilesFailAndForgetTheOldPicture)
{
    TempFolder folder;
    const std::string good = ReadBytes(Icon("VXSong.png"));
    std::string badCrc = good;
    badCrc[good.size() - 20] ^= 0x55; // in the last IDAT's data: its CRC no longer fits
    const std::pair<const char*, std::string> cases[] = {
        {"missing", ""},
        {"empty", ""},
        {"text", "<not a picture>\n"},
        {"signature only", good.substr(0, 8)},
        {"header only", good.substr(0, 33)},
        {"cut in the data", good.substr(0, good.size() / 2)},
        {"bad checksum", badCrc},
        {"signature then junk", good.substr(0, 8) + std::string(64, '\x7f')},
    };
    for (const auto& [name, bytes] : cases) {
        // The object held a picture before: a failed load must not draw it any more.
        auto picture = Create<IRenderableObject>(L"QIFFileEx");
        ASSERT_EQ(ArchiveLoad(picture, Icon("VXSong.png")), S_OK);
        std::filesystem::path file = folder / (std::string(name) + ".png");
        if (std::string(name) != "missing")
            WriteBytes(file, bytes);
        EXPECT_LT(ArchiveLoad(picture, file), 0) << name;
        RecordingCanvas canvas;
        EXPECT_EQ(picture->Render(canvas.Handle(), nullptr, nullptr, 0), E_FAIL) << name;
        EXPECT_TRUE(canvas.m_Calls.empty()) << name;
    }
}

} // namespace
