// The song's own small picture, the same for every song.
#include <cstdint>

#include "persistence/ImageCreate.h"
#include "songs/VXSong.h"

SmartPtr<IRenderableObject> gIconVXSong;

namespace {

// Moves a coordinate by a shift; a rectangle far out at the edge of the range
// wraps rather than overflowing.
int32_t Shifted(int32_t coordinate, int32_t shift) { return int32_t(uint32_t(coordinate) + uint32_t(shift)); }

} // namespace

int32_t CVXSong::Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int)
{
    // The picture sits centred in a box of at most 50 by 43. The height's test is
    // against 42: a height of 43 is "too tall" and is centred with a shift of 0.
    CANVASRect place{0, 0, 0, 0};
    if (rect) {
        place = *rect;
        if (place.width > 50) {
            place.left = Shifted(place.left, (place.width - 50) / 2);
            place.width = 50;
        }
        if (place.height > 42) {
            place.top = Shifted(place.top, (place.height - 43) / 2);
            place.height = 43;
        }
    }
    // A picture that couldn't be read is looked for again next time.
    if (!gIconVXSong)
        gIconVXSong.Attach(IMAGECreate(static_cast<IVXSong*>(this)));
    if (gIconVXSong)
        gIconVXSong->Render(canvas, &place, nullptr, 0);
    return S_OK;
}
