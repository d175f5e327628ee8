#include "host/HostShownBible.h"

#include <unistd.h>

#include "host/HostBible.h"
#include "host/HostPrint.h"

ShownBible::ShownBible(const std::string& path) : m_Bible(LoadTranslation(path))
{
    if (!m_Bible)
        return;
    m_Tree = HostCreate<IUINodeContainer>(L"UITree");
    m_Manager = m_Bible.As<IUIManager>();
    if (!m_Tree || !m_Manager || m_Manager->put_UserInterface(m_Tree) < 0) {
        HostFail("the tree component is not installed");
        m_Bible = nullptr;
    }
}

void ShownBible::ReadBooks()
{
    auto books = m_Bible.As<ISimpleCollection>();
    int count = 0;
    books->get_Count(&count);
    bool terminal = isatty(2);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> book;
        books->get_Item(i, book.Receive());
        if (auto file = book.As<IFileArchive>()) {
            int read = 1;
            if (file->Inquire(ARCHIVE_HASFILE, &read) >= 0 && read == 0)
                file->Load();
        }
        if (terminal) {
            HostErr() << "\rreading books: " << i + 1 << "/" << count;
            HostErr().Flush();
        }
    }
    if (terminal && count > 0)
        HostErr() << '\n';
}
