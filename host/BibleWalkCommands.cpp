// vxhost bible walk / compress / uncompress: a Bible as the application drives it,
// through its tree and its own menu.
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/Host.h"
#include "host/HostOptions.h"
#include "host/HostPrint.h"
#include "host/HostShownBible.h"
#include "host/HostBible.h"
#include "host/HostEnvironment.h"
#include "host/HostSystemMenu.h"
#include "host/HostText.h"
#include "host/HostTranslation.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ValueConversion.h"

namespace {

namespace fs = std::filesystem;

// The screen: it hears the Bible's selections and prints what it would show, the
// caption of the frame around the tree and the text of the selected node.
class CWalkScreen : public CObject<CWalkScreen>, public IObjectInfoImpl<CWalkScreen>, public _IUIContainerEvents {
public:
    static constexpr wchar_t kObjectName[] = L"WalkScreen";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<_IUIContainerEvents>>;

    SmartPtr<IUnknown> m_Caption;

    int32_t NodeSelect(IUnknown* /*source*/, int /*action*/, int /*row*/, int /*flags*/, IUnknown* node) override
    {
        // The caption's blank before the cut abbreviation is no part of what a person reads.
        std::string caption = ToUtf8(m_Caption.get());
        caption.erase(caption.find_last_not_of(" \t\r\n") + 1);
        HostOut() << "caption: " << caption << '\n';
        std::string text = ToUtf8(node);
        size_t start = 0;
        while (start < text.size()) {
            size_t end = text.find_first_of("\r\n", start);
            if (end == std::string::npos)
                end = text.size();
            std::string line = text.substr(start, end - start);
            if (line.find_first_not_of(" \t") != std::string::npos)
                HostOut() << "text: " << line << '\n';
            start = end + 1;
        }
        return S_OK;
    }
};

// The screen with its one reference held by `owner`; null if it can't be made.
CWalkScreen* MakeScreen(SmartPtr<_IUIContainerEvents>* owner)
{
    IID iid = _IUIContainerEvents::Iid();
    if (CObject<CWalkScreen>::_CreateInstance(nullptr, &iid, owner->ReceiveVoid()) < 0 || !*owner)
        return nullptr;
    return static_cast<CWalkScreen*>(owner->get());
}

// The keys of the tree, as the application passes them to the tree's manager.
struct WalkKey {
    const char* m_Name;
    int32_t (IUIManager::*m_Move)();
};

const WalkKey kKeys[] = {
    {"up", &IUIManager::MoveUp},           {"down", &IUIManager::MoveDown},
    {"pageup", &IUIManager::PageUp},       {"pagedown", &IUIManager::PageDown},
    {"previous", &IUIManager::MovePrevious}, {"next", &IUIManager::MoveNext},
};

// The keys of a comma list; false with a message for a key the tree has not.
bool ParseKeys(const std::string& list, std::vector<const WalkKey*>* keys, std::string* error)
{
    size_t start = 0;
    while (start <= list.size() && !list.empty()) {
        size_t end = list.find(',', start);
        if (end == std::string::npos)
            end = list.size();
        std::string name = list.substr(start, end - start);
        const WalkKey* found = nullptr;
        for (const WalkKey& key : kKeys)
            if (name == key.m_Name)
                found = &key;
        if (!found) {
            *error = "--keys: unknown key \"" + name + "\"; the keys are up, down, pageup, pagedown, previous, next";
            return false;
        }
        keys->push_back(found);
        start = end + 1;
    }
    return true;
}

// Ties a shown Bible to a caption frame and the screen for the length of a walk, and
// unties them at the end, so that nothing holds anything in a cycle.
class WalkSetup {
public:
    WalkSetup(IFileArchive* bible, CWalkScreen* screen) : m_Bible(bible), m_Screen(screen) {}
    ~WalkSetup()
    {
        if (m_Source)
            m_Source->Advise(static_cast<_IUIContainerEvents*>(m_Screen), ADVISE_REMOVE);
        if (auto parent = QueryAs<IParent>(m_Bible))
            parent->put_Parent(nullptr);
        m_Screen->m_Caption.Clear();
    }
    WalkSetup(const WalkSetup&) = delete;
    WalkSetup& operator=(const WalkSetup&) = delete;

    bool Tie(std::string* error)
    {
        auto frame = HostCreate<IUnknown>(L"UIManagerCollection");
        m_Source = QueryAs<IEventSource>(m_Bible);
        if (!frame || !m_Source) {
            *error = "the caption frame is not installed";
            return false;
        }
        QueryAs<IParent>(m_Bible)->put_Parent(frame);
        m_Screen->m_Caption = frame;
        m_Source->Advise(static_cast<_IUIContainerEvents*>(m_Screen), ADVISE_ADD);
        return true;
    }

private:
    IFileArchive* m_Bible;
    CWalkScreen* m_Screen;
    SmartPtr<IEventSource> m_Source;
};

int BookCount(IFileArchive* bible)
{
    int count = 0;
    QueryAs<ISimpleCollection>(bible)->get_Count(&count);
    return count;
}

int BibleWalk(const Arguments& arguments)
{
    HostOptions options;
    std::string error;
    if (!HostParseOptions(arguments, &options, &error, {"--keys"}))
        return HostBadUsage(error);
    if (options.m_Positional.size() != 2 || !options.m_Out.empty() || options.m_Force)
        return HostBadUsage("usage: vxhost bible walk BIBLE REFERENCE [--keys KEY,KEY...]");
    std::vector<const WalkKey*> keys;
    if (options.m_Own.count("--keys") && !ParseKeys(options.m_Own["--keys"], &keys, &error))
        return HostBadUsage(error);
    const std::string& reference = options.m_Positional[1];

    SmartPtr<_IUIContainerEvents> held;
    CWalkScreen* screen = MakeScreen(&held);
    if (!screen)
        return HostFail("the screen could not be made");
    ShownBible shown(HostPath(options.m_Positional[0]));
    if (!shown)
        return 1;
    // The application reads a book when it shows it; a walk may show any of them.
    shown.ReadBooks();
    IFileArchive* bible = shown.Bible();
    WalkSetup setup(bible, screen);
    if (!setup.Tie(&error))
        return HostFail(error);

    // The typed reference selects its row, as in the application's search box; the
    // tree then reports that row as a click on it would.
    auto tree = QueryAs<IUITree>(shown.Tree());
    SmartPtr<IUnknown> result;
    QueryAs<IVXSearch>(bible)->Find(HostWide(reference), 0, result.Receive());
    SmartPtr<IUnknown> active;
    int row = tree->GetSelection(0, 2, active.Receive());
    if (row < 0)
        return HostFail("\"" + reference + "\": no book of the Bible matches it");
    HostOut() << "key: start\n";
    tree->SelectRow(row, 7);

    auto manager = QueryAs<IUIManager>(bible);
    for (const WalkKey* key : keys) {
        HostOut() << "key: " << key->m_Name << '\n';
        if ((manager.get()->*(key->m_Move))() < 0)
            HostOut() << "stop: no move\n";
    }
    return 0;
}

// The verb of that name in the Bible's own menu; its code, or a message.
bool FindVerb(IFileArchive* bible, const char* name, int* code, std::string* error)
{
    auto specify = QueryAs<IUIVerbCollectionSpecify>(bible);
    SmartPtr<IUIVerbCollection> verbs;
    if (!specify || specify->GetVerbs(0, nullptr, verbs.Receive()) < 0 || !verbs) {
        *error = "the Bible offers no menu";
        return false;
    }
    for (int i = 0;; ++i) {
        SmartPtr<IUnknown> verb;
        if (verbs->get_Item(i, verb.Receive()) < 0 || !verb)
            break;
        if (ToUtf8(verb.get()) != name)
            continue;
        auto state = verb.As<IUIPropInterrogate>();
        int disabled = 0;
        if (!state || state->Inquire(UIVERB_DISABLED, &disabled) < 0 || state->Inquire(UIVERB_CODE, code) < 0) {
            *error = std::string("the menu's \"") + name + "\" can't be read";
            return false;
        }
        if (disabled) {
            *error = std::string("\"") + name + "\" is not offered for this Bible";
            return false;
        }
        return true;
    }
    *error = std::string("the Bible's menu has no \"") + name + "\"";
    return false;
}

// The translation at path, read with the menu switched on, and the code of its verb
// of that name; empty, with the message printed, when either is missing.
SmartPtr<IFileArchive> OpenForVerb(const std::string& path, const char* verb, HostSystemMenu* menu, int* code)
{
    std::string message;
    if (!menu->On(&message)) {
        HostFail(message);
        return {};
    }
    SmartPtr<IFileArchive> bible = LoadTranslation(path);
    if (bible && !FindVerb(bible, verb, code, &message)) {
        HostFail(path + ": " + message);
        return {};
    }
    return bible;
}

// The one path argument and --force; -1 when the command may go on, else the exit status.
int ParseOne(const Arguments& arguments, const char* usage, std::string* path, bool* force)
{
    HostOptions options;
    std::string error;
    if (!HostParseOptions(arguments, &options, &error))
        return HostBadUsage(error);
    if (options.m_Positional.size() != 1 || !options.m_Out.empty())
        return HostBadUsage(std::string("usage: ") + usage);
    *path = HostPath(options.m_Positional[0]);
    while (path->size() > 1 && path->back() == '/')
        path->pop_back();
    *force = options.m_Force;
    return -1;
}

int BibleCompress(const Arguments& arguments)
{
    std::string folder;
    bool force = false;
    if (int status = ParseOne(arguments, "vxhost bible compress FOLDER [--force]", &folder, &force); status >= 0)
        return status;
    std::error_code error;
    if (!fs::is_directory(folder, error))
        return HostFail(folder + ": not a folder Bible");
    // The Bible packs itself beside its folder, under the folder's name and ".tBL".
    std::string packed = folder + ".tBL";
    if (HostRefuseExisting(packed, force))
        return 1;
    HostSystemMenu menu;
    int code = 0;
    SmartPtr<IFileArchive> bible = OpenForVerb(folder, "Compress", &menu, &code);
    if (!bible)
        return 1;
    auto before = fs::exists(packed, error) ? fs::last_write_time(packed, error) : fs::file_time_type();
    // The packed file is written beside its place and moved there whole, or not at all.
    QueryAs<IUIVerbCollectionSpecify>(bible.get())->DoAction(code, nullptr);
    if (!fs::is_regular_file(packed, error) || fs::last_write_time(packed, error) == before)
        return HostFail(packed + ": could not be written");
    HostOut() << "compressed: " << BookCount(bible) << " books\n" << "written: " << packed << '\n';
    return 0;
}

// Whether `folder` holds bible.ini and one book file for each book.
bool WrittenWhole(const std::string& folder, int books)
{
    std::error_code error;
    if (!fs::is_regular_file(fs::path(folder) / "bible.ini", error))
        return false;
    int files = 0;
    for (const auto& entry : fs::directory_iterator(folder, error))
        files += entry.path().extension() == ".bbl" && entry.is_regular_file(error);
    return !error && files == books;
}

bool EndsWithPacked(const std::string& file)
{
    return file.size() > 4 && strcasecmp(file.c_str() + file.size() - 4, ".tBL") == 0;
}

int BibleUncompress(const Arguments& arguments)
{
    std::string file;
    bool force = false;
    if (int status = ParseOne(arguments, "vxhost bible uncompress FILE.tBL [--force]", &file, &force); status >= 0)
        return status;
    // The books go to the folder of the file's name without its extension.
    if (!EndsWithPacked(file))
        return HostBadUsage(file + ": a packed Bible's name ends in .tBL");
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return HostFail(file + ": no such file");
    std::string folder = file.substr(0, file.size() - 4);
    if (HostRefuseExisting(folder, force))
        return 1;
    HostSystemMenu menu;
    int code = 0;
    SmartPtr<IFileArchive> bible = OpenForVerb(file, "UnCompress", &menu, &code);
    if (!bible)
        return 1;
    // The verb writes into the folder named after the Bible's file: a name beside the
    // target, so that a failure leaves the old folder, or nothing, in its place.
    std::string temporary = folder + ".vxhost-" + std::to_string(::getpid());
    fs::remove_all(temporary, error);
    bible->put_Filename(HostWide(temporary + ".tBL"));
    QueryAs<IUIVerbCollectionSpecify>(bible.get())->DoAction(code, nullptr);
    int books = BookCount(bible);
    if (!WrittenWhole(temporary, books)) {
        fs::remove_all(temporary, error);
        return HostFail(folder + ": could not be written");
    }
    fs::remove_all(folder, error);
    fs::rename(temporary, folder, error);
    if (error) {
        fs::remove_all(temporary, error);
        return HostFail(folder + ": could not be written");
    }
    HostOut() << "uncompressed: " << books << " books\n" << "written: " << folder << '\n';
    return 0;
}

} // namespace

const std::vector<HostCommand>& BibleWalkCommands()
{
    static const std::vector<HostCommand> kCommands = {
        {"bible", "walk", "BIBLE REFERENCE [--keys KEY,KEY...]",
         "Selects a reference in the Bible's tree, then presses the keys (up, down, pageup, pagedown,\n"
         "previous, next) and prints each selection as the screen gets it.\n"
         "Example: vxhost bible walk samples/bible \"Ruth 1:22\" --keys down,down,pagedown,up",
         &BibleWalk},
        {"bible", "compress", "FOLDER [--force]",
         "Packs a folder Bible into FOLDER.tBL through the Bible's own menu (\"Compress\").\n"
         "Example: vxhost bible compress /tmp/kjv",
         &BibleCompress},
        {"bible", "uncompress", "FILE.tBL [--force]",
         "Writes a packed Bible out as the folder of its name through the Bible's own menu (\"UnCompress\").\n"
         "Example: vxhost bible uncompress /tmp/kjv.tBL",
         &BibleUncompress},
    };
    return kCommands;
}
