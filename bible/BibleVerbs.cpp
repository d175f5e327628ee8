// The Bible's menu: its verbs, what each does, and its property page.
#include "bible/VXBible.h"

int32_t CVXBible::GetVerbs(int, IUnknown*, IUIVerbCollection**) { return E_NOTIMPL; }
int32_t CVXBible::DoAction(int, IUnknown*) { return E_NOTIMPL; }
int32_t CVXBible::GetPages(int, INamedCollection**, IUnknown**) { return E_NOTIMPL; }
