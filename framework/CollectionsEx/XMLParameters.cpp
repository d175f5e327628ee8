#include "framework/CollectionsEx/XMLParameters.h"

#include <string>
#include <vector>

#include "persistence/XMLEscape.h"
#include "persistence/TagScan.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IParametersCreatable> NewParameters()
{
    return SmartPtr<IParametersCreatable>::Adopt(BASEObject::CreateParameters());
}

SmartPtr<IString> TextOf(tagREFString view) { return SmartPtr<IString>::Adopt(ISCreate(view)); }

// Adds each attribute of the tag text as an entry; the values lose their references.
void AddAttributes(CREFString attributes, IParametersCreatable* into, int flags)
{
    CREFString name, value;
    while (!attributes.IsEmpty()) {
        int32_t before = attributes.m_Length;
        if (XMLGetNextTAGAttribute(attributes, name, value) < 0 || name.IsEmpty())
            break;
        std::wstring text;
        XMLUnescapeText(value.m_Buffer, size_t(value.m_Length < 0 ? 0 : value.m_Length), text);
        into->Add(TextOf(name), TextOf(CREFString(text.data(), int32_t(text.size()))), nullptr, flags);
        // A scanner that took nothing would hold the loop for ever.
        if (attributes.m_Length >= before)
            break;
    }
}

// The attributes of an element as their own collection; null when it has none.
SmartPtr<IUnknown> Descriptor(const CXMLDocument& document, int32_t node)
{
    CREFString attributes(document.Attributes(node));
    attributes.TrimLeft(false);
    if (attributes.IsEmpty())
        return nullptr;
    auto descriptor = NewParameters();
    if (descriptor)
        AddAttributes(attributes, descriptor, 0);
    return descriptor.As<IUnknown>();
}

struct Pending {
    int32_t m_Node;
    SmartPtr<IParametersCreatable> m_Into;
};

} // namespace

SmartPtr<IParameters> XMLParametersOf(CXMLDocument& document, int32_t element)
{
    auto top = NewParameters();
    if (!top)
        return nullptr;
    // A list of elements still to fill, not recursion: a deep file can't exhaust the stack.
    std::vector<Pending> pending{Pending{element, top}};
    while (!pending.empty()) {
        Pending work = std::move(pending.back());
        pending.pop_back();
        if (work.m_Node != element)
            AddAttributes(CREFString(document.Attributes(work.m_Node)), work.m_Into, PARAMETER_XMLATTRIBUTE);
        for (int32_t child = document.FirstChild(work.m_Node); child >= 0; child = document.Next(child)) {
            if (document.IsInstruction(child))
                continue;
            auto name = TextOf(document.Name(child));
            SmartPtr<IUnknown> descriptor = Descriptor(document, child);
            if (document.FirstChild(child) < 0) {
                work.m_Into->Add(name, TextOf(document.Text(child)), descriptor, 0);
                continue;
            }
            auto nested = NewParameters();
            if (!nested)
                continue;
            work.m_Into->Add(name, nested, descriptor, 0);
            pending.push_back(Pending{child, nested});
        }
    }
    return top.As<IParameters>();
}
