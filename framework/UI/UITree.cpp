#include "framework/UI/UITree.h"

#include <algorithm>

#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IUnknown> Identity(IUnknown* object) { return QueryAs<IUnknown>(object); }

SmartPtr<IUnknown> ItemAt(IUnknown* container, int index)
{
    SmartPtr<IUnknown> item;
    if (auto collection = QueryAs<ISimpleCollection>(container))
        collection->get_Item(index, item.Receive());
    return item;
}

int CountOf(IUnknown* container)
{
    int count = 0;
    auto collection = QueryAs<ISimpleCollection>(container);
    if (!collection || collection->get_Count(&count) < 0)
        return 0;
    return count;
}

} // namespace

void CUITree::FinalRelease()
{
    ClearAdvise(nullptr);
    Detach();
    m_Parent.Clear();
}

int32_t CUITree::SetOption(int code, int value)
{
    m_Options[code] = value;
    return S_OK;
}

int CUITree::Option(int code) const
{
    auto found = m_Options.find(code);
    return found == m_Options.end() ? 0 : found->second;
}

int32_t CUITree::get_Root(IUnknown** root)
{
    if (!root)
        return E_POINTER;
    *root = m_Root.Copy();
    return m_Root ? S_OK : E_FAIL;
}

int32_t CUITree::put_Root(IUnknown* root)
{
    SmartPtr<IUnknown> identity = Identity(root);
    if (!(identity == m_Root.get()) || !identity) {
        m_Open.clear();
        m_Selected = -1;
    }
    m_Root = identity;
    return S_OK;
}

int32_t CUITree::Reset()
{
    m_Open.clear();
    m_Selected = -1;
    return S_OK;
}

bool CUITree::IsOpen(IUnknown* item) const
{
    return std::any_of(m_Open.begin(), m_Open.end(),
                       [item](const SmartPtr<IUnknown>& open) { return open.get() == item; });
}

int32_t CUITree::Open(IUnknown* item)
{
    SmartPtr<IUnknown> identity = Identity(item);
    // Only a collection has rows to show.
    if (!identity || !QueryAs<ISimpleCollection>(item))
        return E_FAIL;
    // A collection that lives in a file, such as a Bible book, is read when first opened:
    // its rows are its content.
    if (auto file = QueryAs<IFileArchive>(item)) {
        int read = 1;
        if (file->Inquire(ARCHIVE_HASFILE, &read) >= 0 && read == 0)
            file->Load();
    }
    if (!IsOpen(identity))
        m_Open.push_back(identity);
    return S_OK;
}

int32_t CUITree::Expand(IUnknown* collection, int index)
{
    SmartPtr<IUnknown> item = ItemAt(collection, index);
    return item ? Open(item) : E_INVALIDARG;
}

std::vector<CUITree::Row> CUITree::Rows() const
{
    std::vector<Row> rows;
    // The open collections on the way down, with the next index in each: a walk
    // with a list, not recursion, and a collection that holds itself opens once.
    struct Level {
        SmartPtr<IUnknown> m_Container;
        int m_Next;
        int m_Count;
    };
    std::vector<Level> path;
    if (m_Root)
        path.push_back(Level{m_Root, 0, CountOf(m_Root)});
    while (!path.empty()) {
        Level& level = path.back();
        if (level.m_Next >= level.m_Count) {
            path.pop_back();
            continue;
        }
        int index = level.m_Next++;
        SmartPtr<IUnknown> container = level.m_Container;
        SmartPtr<IUnknown> item = Identity(ItemAt(container, index));
        int depth = int(path.size()) - 1;
        rows.push_back(Row{container, index, depth, item});
        bool onPath = std::any_of(path.begin(), path.end(),
                                  [&item](const Level& open) { return open.m_Container.get() == item.get(); });
        if (item && IsOpen(item) && !onPath)
            path.push_back(Level{item, 0, CountOf(item)});
    }
    return rows;
}

int32_t CUITree::SelectRow(int row, int mode)
{
    std::vector<Row> rows = Rows();
    if (row < 0 || size_t(row) >= rows.size())
        return E_INVALIDARG;
    m_Selected = row;
    // Mode 7: the tree reports the selection itself; mode 5 leaves that to the caller.
    if (mode == 7) {
        const Row& chosen = rows[size_t(row)];
        Fire_NodeSelect(chosen.m_Container, 1, row, 0, chosen.m_Item);
    }
    return S_OK;
}

int32_t CUITree::GetSelection(int /*a*/, int /*b*/, IUnknown** active)
{
    if (active)
        *active = m_Root.Copy();
    return m_Selected;
}

int32_t CUITree::get_RowCount(int* count)
{
    if (!count)
        return E_POINTER;
    *count = int(Rows().size());
    return S_OK;
}

int32_t CUITree::get_Row(int row, IString** label, int* depth, IUnknown** node)
{
    std::vector<Row> rows = Rows();
    if (row < 0 || size_t(row) >= rows.size())
        return E_INVALIDARG;
    const Row& shown = rows[size_t(row)];
    if (depth)
        *depth = shown.m_Depth;
    if (node)
        *node = shown.m_Item.Copy();
    if (label) {
        *label = nullptr;
        if (auto named = QueryAs<INamedCollection>(shown.m_Container.get()))
            named->get_ItemName(shown.m_Index, label);
        if (!*label)
            *label = ISCreate(CREFString(shown.m_Item.get()));
    }
    return S_OK;
}

int32_t CUITree::ExpandRow(int row)
{
    std::vector<Row> rows = Rows();
    if (row < 0 || size_t(row) >= rows.size())
        return E_INVALIDARG;
    return Open(rows[size_t(row)].m_Item);
}

int32_t CUITree::Detach()
{
    m_Open.clear();
    m_Root.Clear();
    m_Selected = -1;
    return S_OK;
}

int32_t CUITree::get_Parent(IUnknown** parent)
{
    if (!parent)
        return E_POINTER;
    *parent = m_Parent.Copy();
    return S_OK;
}

int32_t CUITree::put_Parent(IUnknown* parent)
{
    m_Parent = SmartPtr<IUnknown>(parent);
    return S_OK;
}
