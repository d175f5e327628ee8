// A small translation tied to a real tree, with a screen that records what the
// Bible tells its subscribers: what the navigation and the menu are tested on.
#pragma once
#include <string>
#include <vector>

#include "runtime/Object.h"
#include "support/Fixture.h"
#include "support/TestBible.h"

namespace vxtest {

// One selection as a subscriber hears it.
struct Heard {
    SmartPtr<IUnknown> source;
    int action = 0;
    int row = 0;
    int flags = 0;
    SmartPtr<IUnknown> node;
    std::wstring text;
};

class CScreenProbe : public CObject<CScreenProbe>, public _IUIContainerEvents, public _IUIRefreshEvent {
public:
    using Interfaces = QiList<Entry<_IUIContainerEvents>, Entry<_IUIRefreshEvent>>;
    int32_t NodeSelect(IUnknown* source, int action, int row, int flags, IUnknown* node) override;
    int32_t UIItemChanged(IUnknown*, int) override
    {
        ++m_Refreshes;
        return S_OK;
    }
    std::vector<Heard> m_Heard;
    int m_Refreshes = 0;
};

// The references held on an object besides the caller's own one.
int OtherHolds(IUnknown* object);

class BibleRig {
public:
    explicit BibleRig(const std::filesystem::path& bible);
    ~BibleRig();
    BibleRig(const BibleRig&) = delete;
    BibleRig& operator=(const BibleRig&) = delete;

    IVXBook* Book(int index);
    // The verse as the book hands it out: the node a click on its row gives.
    SmartPtr<IUnknown> VerseNode(int book, int chapter, int verse);
    SmartPtr<IUnknown> ChapterNode(int book, int chapter);
    // A click on a row of the tree, as the tree reports it to its manager.
    void Click(IUnknown* source, int action, int flags, IUnknown* node);
    std::wstring Caption();
    std::vector<Heard>& Events() { return m_Screen->m_Heard; }
    // Unties the tree, the frame and the screen, as the application does at the end.
    void Untie();

    SmartPtr<IFileArchive> m_Bible;
    SmartPtr<IUIManager> m_Manager;
    SmartPtr<IUITree> m_Tree;
    SmartPtr<IUnknown> m_Frame;
    SmartPtr<_IUIContainerEvents> m_ScreenHeld;
    CScreenProbe* m_Screen = nullptr;
    std::vector<SmartPtr<IVXBook>> m_Books;
};

} // namespace vxtest
