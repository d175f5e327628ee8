// A reference to an owner that an object takes only while someone besides the owner's
// own collections holds the object. An object that views its owner's data must not
// outlive it, and the owner's index of such objects must make no cycle with it.
#pragma once
#include <cstdint>

template <class I> struct OwnerHold {
    I* m_Owner = nullptr;
    // How many references the owner's own collections keep on the object.
    int32_t m_OwnerHolds = 0;
    bool m_Held = false;

    // Takes or drops the owner as the object's count stands against the owner's holds.
    // Dropping it may end the owner and the object with it: the caller touches nothing after.
    void Update(int32_t count)
    {
        bool wanted = m_Owner && count > m_OwnerHolds;
        if (wanted == m_Held)
            return;
        m_Held = wanted;
        if (wanted)
            m_Owner->AddRef();
        else
            m_Owner->Release();
    }

    // The end of the object's Release, after its count fell to count: destroy ends the
    // object (and this hold) at 0, and the owner is let go last.
    template <class Destroy> int32_t Released(int32_t count, Destroy destroy)
    {
        if (count != 0) {
            Update(count);
            return count;
        }
        I* held = Take();
        destroy();
        if (held)
            held->Release();
        return 0;
    }

    // The owner's reference, if held, for the caller to release once done with the object.
    I* Take()
    {
        I* held = m_Held ? m_Owner : nullptr;
        m_Held = false;
        return held;
    }
};
