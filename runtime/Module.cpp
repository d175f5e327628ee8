#include "runtime/Module.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "runtime/ValueConversion.h"

SmartPtr<IComponentCollection> gGlobalComponentCollection;

namespace {

// "./_binlinux/<name>.so", bounded to the buffer.
void ModuleFileName(tagREFString module, char (&path)[264])
{
    static const char kPrefix[] = "./_binlinux/";
    static const char kSuffix[] = ".so";
    std::strcpy(path, kPrefix);
    size_t used = sizeof(kPrefix) - 1;
    size_t room = sizeof(path) - used - sizeof(kSuffix);
    wchar_t wide[264];
    int32_t length = module.m_Length < 0 ? 0 : module.m_Length;
    if (size_t(length) > room)
        length = int32_t(room);
    for (int32_t i = 0; i < length; ++i)
        wide[i] = module.m_Buffer[i];
    wide[length] = L'\0';
    size_t converted = std::wcstombs(path + used, wide, room);
    if (converted == size_t(-1))
        converted = 0;
    std::strcpy(path + used + converted, kSuffix);
}

} // namespace

VXCreateFunction MODULECreateFunction(tagREFString module, tagREFString component)
{
    char path[264];
    ModuleFileName(module, path);
    void* handle = dlopen(path, RTLD_NOW);
    if (!handle) {
        std::printf("Module not available %s, error %s\n", path, dlerror());
        dlerror();
        return nullptr;
    }
    auto lookup = reinterpret_cast<VXCreateFunctionLookup>(dlsym(handle, "CreateFunction"));
    auto initialize = reinterpret_cast<VXInitializeModule>(dlsym(handle, "InitializeModule"));
    if (!lookup)
        return nullptr;
    // Every sibling that this module loads shares this module's collection.
    if (initialize && gGlobalComponentCollection)
        initialize(nullptr, gGlobalComponentCollection.get());
    void* create = nullptr;
    lookup(component, &create);
    return reinterpret_cast<VXCreateFunction>(create);
}

IComponentCollection* GLOBALComponents()
{
    if (!gGlobalComponentCollection) {
        VXCreateFunction create =
            MODULECreateFunction(REFLiteral(L"CollectionsEx"), REFLiteral(L"GlobalComponentCollection"));
        if (create) {
            IComponentCollection* collection = nullptr;
            create(nullptr, const_cast<IID*>(&IID_IComponentCollection), reinterpret_cast<void**>(&collection));
            // The first reference stays with the global.
            gGlobalComponentCollection.Attach(collection);
        }
    }
    return gGlobalComponentCollection.Copy();
}

IUnknown* CreateObject(tagREFString name, IID* iid)
{
    auto collection = SmartPtr<IComponentCollection>::Adopt(GLOBALComponents());
    if (!collection)
        return nullptr;
    IUnknown* out = nullptr;
    collection->CreateObject(name, iid, reinterpret_cast<void**>(&out));
    return out;
}

IComponentString* GetComponentString(IString* name)
{
    auto collection = SmartPtr<IComponentCollection>::Adopt(GLOBALComponents());
    if (!collection)
        return nullptr;
    int index = -1;
    if (collection->get_Index(name, &index) < 0)
        return nullptr;
    SmartPtr<IUnknown> item;
    collection->get_Item(index, item.Receive());
    IComponentString* record = nullptr;
    if (item)
        item->QueryInterface(IID_IComponentString, reinterpret_cast<void**>(&record));
    return record;
}

int32_t ModuleInitialize(IComponentCollection* collection)
{
    // The new reference is taken before the old one is dropped.
    if (collection)
        collection->AddRef();
    gGlobalComponentCollection.Attach(collection);
    return 0;
}

int32_t ModuleCreateFunction(const ComponentEntry* table, int count, tagREFString name, void** createFunction)
{
    if (!createFunction)
        return E_POINTER;
    for (int i = 0; i < count; ++i) {
        const tagREFString& known = table[i].m_Name;
        if (known.m_Length != name.m_Length)
            continue;
        if (name.m_Length > 0 &&
            std::memcmp(known.m_Buffer, name.m_Buffer, sizeof(wchar_t) * size_t(name.m_Length)) != 0)
            continue;
        *createFunction = reinterpret_cast<void*>(table[i].m_Create);
        return S_OK;
    }
    return E_FAIL;
}

bool SameObject(IUnknown* a, IUnknown* b)
{
    if (!a || !b)
        return a == b;
    IUnknown* first = nullptr;
    IUnknown* second = nullptr;
    a->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&first));
    b->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&second));
    if (first)
        first->Release();
    if (second)
        second->Release();
    return first == second;
}
