#include "bible/BibleRig.h"

#include "bible/BookMaker.h"

namespace vxtest {

BibleRig::BibleRig(const std::filesystem::path& bible, bool read)
{
    m_Bible = OpenBible(bible);
    m_Bible->Load();
    m_Manager = m_Bible.As<IUIManager>();
    m_Tree = Create<IUITree>(L"UITree");
    m_Frame = Create<IUnknown>(L"UIManagerCollection");
    IID iid = _IUIContainerEvents::Iid();
    CObject<CScreenProbe>::_CreateInstance(nullptr, &iid, m_ScreenHeld.ReceiveVoid());
    m_Screen = static_cast<CScreenProbe*>(m_ScreenHeld.get());
    m_Manager->put_UserInterface(m_Tree.As<IUINodeContainer>());
    m_Bible.As<IParent>()->put_Parent(m_Frame);
    m_Bible.As<IEventSource>()->Advise(m_ScreenHeld, ADVISE_ADD);
    auto books = m_Bible.As<ISimpleCollection>();
    SmartPtr<IUnknown> item;
    for (int i = 0; books->get_Item(i, item.Receive()) >= 0; ++i, item.Clear()) {
        if (read)
            item.As<IFileArchive>()->Load();
        m_Books.push_back(item.As<IVXBook>());
    }
}

void BibleRig::Untie()
{
    if (!m_Bible)
        return;
    m_Bible.As<IEventSource>()->Advise(m_ScreenHeld, ADVISE_REMOVE);
    m_Bible.As<IUIManager>()->put_UserInterface(nullptr);
    m_Bible.As<IParent>()->put_Parent(nullptr);
}

SmartPtr<IUnknown> BibleRig::VerseNode(int book, int chapter, int verse)
{
    SmartPtr<IString> text;
    Book(book)->get_Verse(chapter, verse, 1, text.Receive());
    return QueryAs<IUnknown>(text.get());
}

SmartPtr<IUnknown> BibleRig::ChapterNode(int book, int chapter)
{
    SmartPtr<IUnknown> item;
    QueryAs<ISimpleCollection>(Book(book))->get_Item(chapter, item.Receive());
    return item;
}

} // namespace vxtest
