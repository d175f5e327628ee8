// A translation tied to a real tree and a caption frame, with a screen that records
// what the Bible tells its subscribers.
#pragma once
#include <string>
#include <vector>

#include "runtime/Object.h"
#include "support/Fixture.h"
#include "support/TestBible.h"

namespace vxtest {

struct Heard {
    SmartPtr<IUnknown> source;
    int action, row, flags;
    SmartPtr<IUnknown> node;
    std::wstring text;
};

class CScreenProbe : public CObject<CScreenProbe>, public _IUIContainerEvents, public _IUIRefreshEvent {
public:
    using Interfaces = QiList<Entry<_IUIContainerEvents>, Entry<_IUIRefreshEvent>>;
    int32_t NodeSelect(IUnknown* source, int action, int row, int flags, IUnknown* node) override
    {
        m_Heard.push_back(Heard{QueryAs<IUnknown>(source), action, row, flags, QueryAs<IUnknown>(node), Text(node)});
        return S_OK;
    }
    int32_t UIItemChanged(IUnknown*, int) override { return ++m_Refreshes, S_OK; }
    std::vector<Heard> m_Heard;
    int m_Refreshes = 0;
};

// The references held on an object besides the caller's own one.
inline int OtherHolds(IUnknown* object) { return object->AddRef(), object->Release() - 1; }

class BibleRig {
public:
    // With read false the books are left for the Bible to read when it needs them.
    explicit BibleRig(const std::filesystem::path& bible, bool read = true);
    ~BibleRig() { Untie(); }
    BibleRig(const BibleRig&) = delete;
    BibleRig& operator=(const BibleRig&) = delete;

    IVXBook* Book(int index) { return m_Books.at(size_t(index)).get(); }
    // A verse as its book hands it out, and a chapter: the nodes of the tree's rows.
    SmartPtr<IUnknown> VerseNode(int book, int chapter, int verse);
    SmartPtr<IUnknown> ChapterNode(int book, int chapter);
    // A row chosen, as the tree reports it to its manager.
    void Click(IUnknown* source, int action, int flags, IUnknown* node)
    {
        m_Bible.As<_IUIContainerEvents>()->NodeSelect(source, action, 0, flags, node);
    }
    std::wstring Caption() { return Text(m_Frame); }
    std::vector<Heard>& Events() { return m_Screen->m_Heard; }
    // As the application does at the end: the screen leaves, the tree and frame are cut.
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
