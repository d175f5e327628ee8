// "QIFFileEx": PNG pictures of each colour type read into the same RGBA pixels,
// and every kind of bad file refused without leaving a picture behind.
#include <filesystem>
#include <string>

#include "framework/Renderer/RecordingCanvas.h"
#include "support/Fixture.h"

using namespace vxtest;

namespace {

std::filesystem::path Icon(const char* name) { return std::filesystem::path(VX_SOURCE_DIR) / "icons" / name; }

class PictureFileTest : public ModuleTest {
protected:
    // A picture object that has tried to load the file; its Load result in *result.
    static SmartPtr<IRenderableObject> Picture(const std::filesystem::path& file, int32_t* result)
    {
        auto picture = Create<IRenderableObject>(L"QIFFileEx");
        EXPECT_TRUE(picture);
        auto archive = picture.As<IFileArchive>();
        archive->put_Filename(Str(std::wstring(file.wstring())));
        *result = archive->Load();
        return picture;
    }
};

TEST_F(PictureFileTest, EachColourTypeGivesRGBAPixels)
{
    struct Case {
        const char* file;
        int x, y;
        uint32_t pixel; // 0xAABBGGRR
    };
    const Case cases[] = {
        {"VXSong.png", 11, 23, 0xFFA04020u},      // RGBA: the note's head
        {"VXSong.png", 0, 0, 0x00000000u},        // RGBA: transparent ground
        {"VXBible.png", 15, 15, 0xFF3CB4DCu},     // palette, 4 bits: the cross
        {"VXBible.png", 1, 31, 0xFFFFFFFFu},      // palette: the odd pixel of a byte
        {"VXBibleBook.png", 15, 15, 0xFF8C8C8Cu}, // grey
        {"VXSongVerse.png", 4, 8, 0xFF282828u},   // grey with alpha
        {"VXSongVerse.png", 30, 30, 0x00000000u},
    };
    for (const Case& c : cases) {
        int32_t loaded = 0;
        auto picture = Picture(Icon(c.file), &loaded);
        ASSERT_EQ(loaded, S_OK) << c.file;
        RecordingCanvas canvas;
        CANVASRect rect{7, 9, 64, 48};
        ASSERT_EQ(picture->Render(canvas.Handle(), &rect, nullptr, 0), S_OK);
        ASSERT_EQ(canvas.m_Calls.size(), 1u);
        const RecordingCanvas::Call& call = canvas.m_Calls[0];
        EXPECT_TRUE(call.m_IsPicture);
        EXPECT_EQ(call.m_Rect.left, 7);
        EXPECT_EQ(call.m_Rect.height, 48);
        EXPECT_EQ(call.m_Picture.m_Width, 32);
        EXPECT_EQ(call.m_Picture.m_Height, 32);
        ASSERT_EQ(call.m_Picture.m_Pixels.size(), 32u * 32u);
        EXPECT_EQ(call.m_Picture.m_Pixels[size_t(c.y) * 32 + size_t(c.x)], c.pixel) << c.file << " " << c.x;
    }
}

TEST_F(PictureFileTest, BadFilesFailAndForgetTheOldPicture)
{
    TempFolder folder;
    const std::string good = ReadBytes(Icon("VXSong.png"));
    std::string badCrc = good;
    badCrc[good.size() - 20] ^= 0x55; // inside the last IDAT's data or CRC
    struct Case {
        const char* name;
        std::string bytes;
        bool write;
    };
    const Case cases[] = {
        {"missing", "", false},
        {"empty", "", true},
        {"text", "<not a picture>\n", true},
        {"signature only", good.substr(0, 8), true},
        {"header only", good.substr(0, 33), true},
        {"cut in the data", good.substr(0, good.size() / 2), true},
        {"bad checksum", badCrc, true},
        {"signature then junk", good.substr(0, 8) + std::string(64, '\x7f'), true},
    };
    for (const Case& c : cases) {
        // The object held a picture before: a failed load must not draw it any more.
        int32_t loaded = 0;
        auto picture = Picture(Icon("VXSong.png"), &loaded);
        ASSERT_EQ(loaded, S_OK);
        std::filesystem::path file = folder / (std::string(c.name) + ".png");
        if (c.write)
            WriteBytes(file, c.bytes);
        auto archive = QueryAs<IFileArchive>(picture.get());
        archive->put_Filename(Str(file.wstring()));
        EXPECT_LT(archive->Load(), 0) << c.name;
        RecordingCanvas canvas;
        EXPECT_EQ(picture->Render(canvas.Handle(), nullptr, nullptr, 0), E_FAIL) << c.name;
        EXPECT_TRUE(canvas.m_Calls.empty()) << c.name;
    }
}

TEST_F(PictureFileTest, NullRectangleDrawsAtTheOwnSize)
{
    int32_t loaded = 0;
    auto picture = Picture(Icon("VXBible.png"), &loaded);
    ASSERT_EQ(loaded, S_OK);
    RecordingCanvas canvas;
    EXPECT_EQ(picture->Render(nullptr, nullptr, nullptr, 0), E_POINTER);
    ASSERT_EQ(picture->Render(canvas.Handle(), nullptr, nullptr, 0), S_OK);
    ASSERT_EQ(canvas.m_Calls.size(), 1u);
    const CANVASRect& rect = canvas.m_Calls[0].m_Rect;
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.width, 32);
    EXPECT_EQ(rect.height, 32);
}

} // namespace
