#include "framework/CollectionsEx/FolderTree.h"

#include <cwchar>

namespace {

bool SameName(const std::wstring& known, tagREFString name)
{
    return known.size() == size_t(name.m_Length) &&
           std::wmemcmp(known.data(), name.m_Buffer, size_t(name.m_Length)) == 0;
}

} // namespace

bool FolderNameValid(tagREFString name) { return name.m_Length > 0 && name.m_Buffer; }

int FolderNode::Find(tagREFString name) const
{
    if (!FolderNameValid(name))
        return -1;
    for (size_t i = 0; i < m_Items.size(); ++i)
        if (SameName(m_Items[i].m_Name, name))
            return int(i);
    return -1;
}

int FolderNode::FindFolder(int position) const
{
    if (position < 0)
        return -1;
    for (size_t i = 0; i < m_Items.size(); ++i) {
        if (!m_Items[i].IsFolder())
            continue;
        if (position-- == 0)
            return int(i);
    }
    return -1;
}

FolderItem& FolderNode::Put(tagREFString name, FolderItemKind kind)
{
    int index = Find(name);
    if (index < 0) {
        m_Items.emplace_back();
        m_Items.back().m_Name.assign(name.m_Buffer, size_t(name.m_Length));
        index = int(m_Items.size() - 1);
    }
    FolderItem& item = m_Items[size_t(index)];
    item.m_Kind = kind;
    item.m_Bytes.clear();
    item.m_Folder.reset();
    return item;
}

std::shared_ptr<FolderNode> FolderNode::PutFolder(tagREFString name)
{
    FolderItem& item = Put(name, FolderItemKind::Folder);
    item.m_Folder = std::make_shared<FolderNode>();
    return item.m_Folder;
}
