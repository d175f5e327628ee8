// The host's Bible commands show a translation as the program does: in its tree.
#pragma once
#include <string>

#include "host/Host.h"

// A translation tied to a tree, as the program shows one; the tie is cut on the way out,
// since the tree holds the Bible as its root.
class ShownBible {
public:
    explicit ShownBible(const std::string& path);
    ~ShownBible()
    {
        if (m_Manager)
            m_Manager->put_UserInterface(nullptr);
    }
    ShownBible(const ShownBible&) = delete;
    ShownBible& operator=(const ShownBible&) = delete;

    explicit operator bool() const { return bool(m_Bible); }
    IVXSearch* Search() { return QueryAs<IVXSearch>(m_Bible.get()).get(); }
    IFileArchive* Bible() { return m_Bible.get(); }
    IUINodeContainer* Tree() { return m_Tree.get(); }

    // Reads every book now, showing how far it got on a terminal: a first search of a
    // whole Bible reads them all.
    void ReadBooks();

private:
    SmartPtr<IFileArchive> m_Bible;
    SmartPtr<IUINodeContainer> m_Tree;
    SmartPtr<IUIManager> m_Manager;
};

