// The song's picture: looked for under the registry's shared folder until it is
// found, then kept; drawn centred in a box of at most 50 by 43. IMAGECreate names
// the picture after the object's component.
#include <cstring>

#include "framework/Renderer/RecordingCanvas.h"
#include "persistence/ImageCreate.h"
#include "songs/SongSupport.h"
#include "support/ScopedRegistry.h"

namespace {

using namespace vxtest;

std::string Icon(const char* name) { return ReadBytes(std::filesystem::path(VX_SOURCE_DIR) / "icons" / name); }

class SongPicture : public SongTest {
protected:
    SongPicture() { WriteBytes(m_Folder / "registry.ini", "[Workspace]\nCommonPath=" + m_Folder.Path().string()); }
    void PutIcon(const std::string& name, const std::string& bytes)
    {
        std::filesystem::create_directories(m_Folder / "icons");
        WriteBytes(m_Folder / "icons" / name, bytes);
    }
    // Only a copy of the rectangle may change.
    static std::vector<RecordingCanvas::Call> Drawn(IUnknown* song, CANVASRect* rect)
    {
        RecordingCanvas canvas;
        CANVASRect before = rect ? *rect : CANVASRect{};
        EXPECT_EQ(QueryAs<IRenderableObject>(song)->Render(canvas.Handle(), rect, nullptr, 0), S_OK);
        EXPECT_TRUE(!rect || std::memcmp(rect, &before, sizeof before) == 0);
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
    PutIcon("VXSong.png", Icon("VXSong.png"));
    const struct { bool null; CANVASRect given, drawn; } cases[] = {
        {false, {0, 0, 100, 100}, {25, 28, 50, 43}}, {false, {10, 20, 50, 43}, {10, 20, 50, 43}},
        {false, {0, 0, 51, 42}, {0, 0, 50, 42}},     {false, {5, 5, 30, 200}, {5, 83, 30, 43}},
        {true, {}, {0, 0, 0, 0}},
    };
    for (const auto& c : cases) {
        CANVASRect given = c.given;
        auto calls = Drawn(song, c.null ? nullptr : &given);
        ASSERT_EQ(calls.size(), 1u);
        const CANVASRect& d = calls[0].m_Rect;
        EXPECT_EQ(std::vector<int32_t>({d.left, d.top, d.width, d.height}),
                  std::vector<int32_t>({c.drawn.left, c.drawn.top, c.drawn.width, c.drawn.height}))
            << c.given.width << "x" << c.given.height;
        EXPECT_EQ(calls[0].m_Picture.m_Width * calls[0].m_Picture.m_Height, 32 * 32);
    }
    // Every song shows the one picture, read once: taking the file away changes nothing.
    std::filesystem::remove_all(m_Folder / "icons");
    EXPECT_EQ(Drawn(NewSong(), &rect).size(), 1u);
}

TEST_F(SongPicture, ImageCreateByComponent)
{
    ScopedRegistry registry(m_Folder / "registry.ini");
    PutIcon("VXSongVerse.png", Icon("VXSongVerse.png"));
    const std::pair<const wchar_t*, bool> cases[] = {{L"VXSongVerse", true}, {L"VXSong", false}, {nullptr, false}};
    for (auto [component, found] : cases) {
        auto object = component ? Create<IUnknown>(component) : SmartPtr<IUnknown>();
        auto picture = SmartPtr<IRenderableObject>::Adopt(IMAGECreate(object.get()));
        EXPECT_EQ(bool(picture), found) << (component ? Narrow(component) : "null");
    }
}

} // namespace
