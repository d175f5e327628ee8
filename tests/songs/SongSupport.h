// What the song suites share: a song made by name, its verses as names and texts,
// and its attributes, all read through the interfaces an application uses.
#pragma once
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Object.h"
#include "support/Collections.h"
#include "support/Fixture.h"

namespace vxtest {

struct SongVerses { std::vector<std::wstring> ids; std::vector<std::wstring> texts; };

inline SongVerses VersesOf(IUnknown* song)
{
    SongVerses out;
    auto collection = QueryAs<ISuperCollection>(song);
    auto book = QueryAs<IVXBook>(song);
    int count = 0;
    book->get_VerseCount(0, &count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IString> verse;
        collection->get_ItemName(i, name.Receive());
        book->get_Verse(0, i, 1, verse.Receive());
        std::wstring id = Text(name);
        out.ids.push_back(id.substr(0, id.find(L" : ")));
        out.texts.push_back(Text(verse));
    }
    return out;
}

using Attributes = std::vector<std::pair<std::wstring, std::wstring>>;

// Name and value of every attribute, in order, through the song's IParameters.
inline Attributes AttributesOf(IUnknown* song)
{
    Attributes out;
    auto parameters = QueryAs<IParameters>(song);
    for (int i = 0, count = parameters ? Count(parameters) : 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> value;
        parameters->get_ItemName(i, name.Receive());
        parameters->get_Item(i, value.Receive());
        out.emplace_back(Text(name), Text(value));
    }
    return out;
}

// Verse `index` of a song.
inline SmartPtr<IVXSongVerse> VerseAt(IUnknown* song, int index)
{
    SmartPtr<IUnknown> item;
    QueryAs<ISuperCollection>(song)->get_Item(index, item.Receive());
    return QueryAs<IVXSongVerse>(item.get());
}

inline std::wstring SongText(IVXSong* song, short flags)
{
    SmartPtr<IString> text;
    song->GetText(text.Receive(), flags);
    return Text(text);
}

inline void SetText(IVXSong* song, const std::wstring& text, short mode = SONGVERSES_PARSE)
{
    song->SetVerses(View(text), mode);
}

inline int ArchiveFlag(IUnknown* song, int code)
{
    int value = -1;
    QueryAs<IFileArchive>(song)->Inquire(code, &value);
    return value;
}

// An owner that counts the song's change events.
class CRefreshProbe : public CObject<CRefreshProbe>, public _IUIRefreshEvent {
public:
    using Interfaces = QiList<Entry<_IUIRefreshEvent>>;
    int32_t UIItemChanged(IUnknown*, int) override
    {
        ++m_Count;
        return S_OK;
    }
    int m_Count = 0;
};

// Songs and their verses point at each other: each song a test met is cleared at its end.
class SongTest : public ModuleTest {
protected:
    SmartPtr<IVXSong> NewSong()
    {
        auto song = Create<IVXSong>(L"VXSong");
        EXPECT_TRUE(song);
        m_Songs.emplace_back(song.get());
        return song;
    }
    void TearDown() override
    {
        for (auto& song : m_Songs)
            if (auto verses = QueryAs<ISuperCollection>(song.get()))
                verses->Clear();
    }
    std::vector<SmartPtr<IUnknown>> m_Songs;
};

} // namespace vxtest
