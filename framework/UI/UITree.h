// "UITree": a headless tree over a collection. Each item of the root is a row; a
// row whose item is itself a collection can be opened, and its items then follow
// it as rows one level deeper. Rows are counted from 0 at the top, through
// whatever is open, and a row's label is its item's name in the collection that
// holds it (or the item's own text where that collection has no names).
//
// The tree's manager subscribes through IEventSource and hears NodeSelect when
// the tree itself reports a selection (SelectRow mode 7, or a host's click).
#pragma once
#include <map>
#include <vector>

#include "runtime/EventSource.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CUITree : public CObject<CUITree>,
                public IObjectInfoImpl<CUITree>,
                public IUITree,
                public IUITreeView,
                public IUINodeContainer,
                public IParent,
                public IEventSourceImpl<CUITree, &IID__IUIContainerEvents>,
                public _FIREUIContainerEvents<CUITree> {
public:
    static constexpr wchar_t kObjectName[] = L"UITree";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IUITree>, Entry<IUITreeView>, Entry<IUINodeContainer>,
                              Entry<IParent>, Entry<IEventSource>>;

    void FinalRelease() override;

    // IUITree
    int32_t SetOption(int code, int value) override;
    int32_t get_Root(IUnknown** root) override;
    // A new root closes every row; the same root again only has its rows read anew.
    int32_t put_Root(IUnknown* root) override;
    int32_t Reset() override;
    int32_t Expand(IUnknown* collection, int index) override;
    int32_t SelectRow(int row, int mode) override;
    // The selected row (-1 for none); *active is the root.
    int32_t GetSelection(int a, int b, IUnknown** active) override;

    // IUITreeView
    int32_t get_RowCount(int* count) override;
    int32_t get_Row(int row, IString** label, int* depth, IUnknown** node) override;
    int32_t ExpandRow(int row) override;

    // IUINodeContainer: the manager lets go; the tree lets go of what it showed.
    int32_t Detach() override;

    // IParent: the manager.
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;

    // The option's value, 0 if never set.
    int Option(int code) const;

private:
    struct Row {
        SmartPtr<IUnknown> m_Container;
        int m_Index;
        int m_Depth;
        SmartPtr<IUnknown> m_Item;
    };

    std::vector<Row> Rows() const;
    bool IsOpen(IUnknown* item) const;
    int32_t Open(IUnknown* item);

    SmartPtr<IUnknown> m_Root;
    SmartPtr<IUnknown> m_Parent;
    // The items whose rows are open, by identity.
    std::vector<SmartPtr<IUnknown>> m_Open;
    std::map<int, int> m_Options;
    int m_Selected = -1;
};
