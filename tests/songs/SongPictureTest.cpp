// The song's picture: looked for under the registry's shared folder until it is
// found, then kept; drawn centred in a box of at most 50 by 43; and IMAGECreate,
// which names the picture after the object's component.
#include "framework/Renderer/RecordingCanvas.h"
#include "persistence/ImageCreate.h"
#include "songs/SongSupport.h"
#include "support/ScopedRegistry.h"

namespace {

using namespace vxtest;

class SongPicture : public SongTest {
protected:
    SongPicture() { WriteBytes(m_Folder / "registry.ini", "[Workspace]\nCommonPath=" + m_Folder.Path().string() + "\n"); }
    void PutIcon(const std::string& name, const std::string& bytes)
    {
        std::filesystem::create_directories(m_Folder / "icons");
        WriteBytes(m_Folder / "icons" / name, bytes);
    }
    static std::string Icon(const char* name)
    {
        return ReadBytes(std::filesystem::path(VX_SOURCE_DIR) / "icons" / name);
    }
    // What Render drew: one picture's rectangle and size, or nothing.
    static std::vector<RecordingCanvas::Call> Drawn(IVXSong* song, CANVASRect* rect)
    {
        RecordingCanvas canvas;
        EXPECT_EQ(QueryAs<IRenderableObject>(song)->Render(canvas.Handle(), rect, nullptr, 0), S_OK);
        return canvas.m_Calls;
    }
    TempFolder m_Folder;
};

// The picture is kept for the process once found, so the whole story is one test.
TEST_F(SongPicture, LookedForUntilFoundThenKept)
{
    ScopedRegistry registry(m_Folder / "registry.ini");
    auto song = NewSong();
    CANVASRect rect{0, 0, 100, 100};
    EXPECT_TRUE(Drawn(song, &rect).empty()) << "no icons folder";
    PutIcon("VXSong.png", "not a picture\n");
    EXPECT_TRUE(Drawn(song, &rect).empty()) << "not a PNG";
    PutIcon("VXSong.png", Icon("VXSong.png").substr(0, 100));
    EXPECT_TRUE(Drawn(song, &rect).empty()) << "cut short";
    PutIcon("VXSong.png", Icon("VXSong.png"));

    struct Case {
        bool null;
        CANVASRect given;
        CANVASRect drawn;
    };
    const Case cases[] = {
        {false, {0, 0, 100, 100}, {25, 28, 50, 43}},
        {false, {10, 20, 50, 43}, {10, 20, 50, 43}}, // 43 is too tall, by a shift of 0
        {false, {0, 0, 51, 42}, {0, 0, 50, 42}},
        {false, {5, 5, 30, 200}, {5, 83, 30, 43}},
        {false, {-40, -40, 20, 10}, {-40, -40, 20, 10}},
        {true, {}, {0, 0, 0, 0}},
    };
    for (const Case& c : cases) {
        CANVASRect given = c.given;
        auto calls = Drawn(song, c.null ? nullptr : &given);
        ASSERT_EQ(calls.size(), 1u);
        const CANVASRect& drawn = calls[0].m_Rect;
        EXPECT_TRUE(calls[0].m_IsPicture);
        EXPECT_EQ(calls[0].m_Picture.m_Width, 32);
        EXPECT_EQ(calls[0].m_Picture.m_Height, 32);
        EXPECT_EQ(std::vector<int32_t>({drawn.left, drawn.top, drawn.width, drawn.height}),
                  std::vector<int32_t>({c.drawn.left, c.drawn.top, c.drawn.width, c.drawn.height}))
            << c.given.width << "x" << c.given.height;
        // Only a copy of the caller's rectangle is changed.
        EXPECT_EQ(given.width, c.given.width);
    }
    // Every song shows the one picture, read once: taking the file away changes nothing.
    std::filesystem::remove_all(m_Folder / "icons");
    auto other = NewSong();
    EXPECT_EQ(Drawn(other, &rect).size(), 1u);
}

TEST_F(SongPicture, ImageCreateByComponent)
{
    ScopedRegistry registry(m_Folder / "registry.ini");
    PutIcon("VXSongVerse.png", Icon("VXSongVerse.png"));
    PutIcon("CreatableString.png", "broken");
    struct Case {
        const char* what;
        SmartPtr<IUnknown> object;
        int32_t width; // 0: no picture
    };
    const Case cases[] = {
        {"a verse", Create<IUnknown>(L"VXSongVerse"), 32},
        {"a song, whose picture is not there", Create<IUnknown>(L"VXSong"), 0},
        {"a string, whose picture is damaged", SmartPtr<IUnknown>(Str(L"text")), 0},
        {"nothing", nullptr, 0},
    };
    for (const Case& c : cases) {
        auto picture = SmartPtr<IRenderableObject>::Adopt(IMAGECreate(c.object.get()));
        ASSERT_EQ(bool(picture), c.width != 0) << c.what;
        if (!picture)
            continue;
        RecordingCanvas canvas;
        picture->Render(canvas.Handle(), nullptr, nullptr, 0);
        ASSERT_EQ(canvas.m_Calls.size(), 1u);
        EXPECT_EQ(canvas.m_Calls[0].m_Picture.m_Width, c.width) << c.what;
    }
}

} // namespace
