#include "bible/BibleRig.h"

#include "support/Collections.h"

namespace vxtest {

int32_t CScreenProbe::NodeSelect(IUnknown* source, int action, int row, int flags, IUnknown* node)
{
    m_Heard.push_back(Heard{QueryAs<IUnknown>(source), action, row, flags, QueryAs<IUnknown>(node), Text(node)});
    return S_OK;
}

int OtherHolds(IUnknown* object)
{
    object->AddRef();
    return object->Release() - 1;
}

BibleRig::BibleRig(const std::filesystem::path& bible)
{
    m_Bible = Create<IFileArchive>(L"VXBible");
    m_Bible->put_Filename(Str(bible.wstring()));
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
    int count = 0;
    m_Bible.As<ISimpleCollection>()->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> item;
        m_Bible.As<ISimpleCollection>()->get_Item(i, item.Receive());
        if (auto file = item.As<IFileArchive>())
            file->Load();
        m_Books.push_back(item.As<IVXBook>());
    }
}

BibleRig::~BibleRig() { Untie(); }

void BibleRig::Untie()
{
    if (!m_Bible)
        return;
    m_Bible.As<IEventSource>()->Advise(m_ScreenHeld, ADVISE_REMOVE);
    m_Manager->put_UserInterface(nullptr);
    m_Bible.As<IParent>()->put_Parent(nullptr);
}

IVXBook* BibleRig::Book(int index) { return m_Books.at(size_t(index)).get(); }

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

void BibleRig::Click(IUnknown* source, int action, int flags, IUnknown* node)
{
    m_Bible.As<_IUIContainerEvents>()->NodeSelect(source, action, 0, flags, node);
}

std::wstring BibleRig::Caption() { return Text(m_Frame); }

} // namespace vxtest
