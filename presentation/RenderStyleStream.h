// The render style in a stream. One table of keys serves both kinds of stream: an
// XML stream holds every key as text, a folder stream holds the raw bytes of all but
// "Orientation". Each key reads back by a rule of its own, and the differences
// between what is written and what is read are kept as they have always been.
#pragma once
#include <cstdint>
#include <iterator>

#include "presentation/RenderStyleImpl.h"

struct RenderStyleKeys {
    // How a key's value is written and read in XML.
    enum class Kind {
        Colour,  // "#RRGGBB"; the top byte is lost on reading
        Short,   // decimal, low 16 bits kept
        Integer, // decimal
        Low16,   // written whole, read back as its low 16 bits with their sign
        Angle,   // written as a double, read back as an integer
        Face,    // the font face string as it is
    };

    struct Key {
        tagREFString m_Name;
        Kind m_Kind;
        // Bytes of the folder item; 0 where the folder stream doesn't hold the key.
        int m_FolderSize;
        void* (*m_Field)(IVXRenderStyleImpl& style);
    };

    template <auto Member> static void* Field(IVXRenderStyleImpl& style) { return &(style.*Member); }

    // In the order in which Save writes them.
    static const Key* Table(int* count)
    {
        using S = IVXRenderStyleImpl;
        static const Key kKeys[] = {
            {REFLiteral(L"Color"), Kind::Colour, 4, &Field<&S::m_Color>},
            {REFLiteral(L"BackColor"), Kind::Colour, 4, &Field<&S::m_BackColor>},
            {REFLiteral(L"ColorShadow"), Kind::Colour, 4, &Field<&S::m_ShadowColor>},
            {REFLiteral(L"ColorOutline"), Kind::Colour, 4, &Field<&S::m_OutlineColor>},
            {REFLiteral(L"TextAlignX"), Kind::Short, 2, &Field<&S::m_TextAlignX>},
            {REFLiteral(L"TextAlignY"), Kind::Short, 2, &Field<&S::m_TextAlignY>},
            {REFLiteral(L"TextShadowX"), Kind::Short, 2, &Field<&S::m_ShadowOffsetX>},
            {REFLiteral(L"TextShadowY"), Kind::Short, 2, &Field<&S::m_ShadowOffsetY>},
            {REFLiteral(L"NumberLines"), Kind::Integer, 4, &Field<&S::m_NumberDisplayLines>},
            {REFLiteral(L"OutlineFont"), Kind::Integer, 4, &Field<&S::m_FontOutlined>},
            {REFLiteral(L"OutlineThickness"), Kind::Integer, 4, &Field<&S::m_OutlineWidth>},
            {REFLiteral(L"Angle"), Kind::Angle, 8, &Field<&S::m_Angle>},
            {REFLiteral(L"DisplayMode"), Kind::Integer, 4, &Field<&S::m_DisplayMode>},
            {REFLiteral(L"Height"), Kind::Integer, 4, &Field<&S::m_FontHeight>},
            {REFLiteral(L"Width"), Kind::Integer, 4, &Field<&S::m_FontWidth>},
            {REFLiteral(L"Italic"), Kind::Low16, 4, &Field<&S::m_Italics>},
            {REFLiteral(L"Boldness"), Kind::Integer, 4, &Field<&S::m_Boldness>},
            {REFLiteral(L"Underline"), Kind::Low16, 4, &Field<&S::m_Underline>},
            {REFLiteral(L"StrikeOut"), Kind::Short, 2, &Field<&S::m_StrikeOut>},
            {REFLiteral(L"Orientation"), Kind::Integer, 0, &Field<&S::m_Orientation>},
            {REFLiteral(L"FontFace"), Kind::Face, 0, &Field<&S::m_FontFace>},
        };
        *count = int(std::size(kKeys));
        return kKeys;
    }

    // Colours are kept with red in the low byte; XML text has red first.
    static unsigned int SwapRedBlue(unsigned int color)
    {
        return (color & 0xFF00FF00u) | ((color & 0xFFu) << 16) | ((color >> 16) & 0xFFu);
    }

    // The text of a key's value, with a reference for the caller.
    static IString* XMLText(IVXRenderStyleImpl& style, const Key& key)
    {
        void* field = key.m_Field(style);
        switch (key.m_Kind) {
        case Kind::Colour:
            return ISCreateHex(SwapRedBlue(*static_cast<unsigned int*>(field)));
        case Kind::Short:
            return ISCreate(int(*static_cast<short*>(field)));
        case Kind::Integer:
        case Kind::Low16:
            return ISCreate(int(*static_cast<int32_t*>(field)));
        case Kind::Angle: {
            auto value = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
            if (!value)
                return nullptr;
            value->put_Double(*static_cast<double*>(field));
            return ISCreate(value.get());
        }
        case Kind::Face:
            return static_cast<SmartPtr<IString>*>(field)->Copy();
        }
        return nullptr;
    }

    // Parses a key's XML text straight into its field, past the accessors' rules.
    static void XMLParse(IVXRenderStyleImpl& style, const Key& key, CREFString text)
    {
        void* field = key.m_Field(style);
        switch (key.m_Kind) {
        case Kind::Colour:
            *static_cast<unsigned int*>(field) = _IS2Color(text, 10);
            break;
        case Kind::Short:
            *static_cast<short*>(field) = short(_IS2Integer(text, 10));
            break;
        case Kind::Integer:
            *static_cast<int32_t*>(field) = _IS2Integer(text, 10);
            break;
        case Kind::Low16:
            *static_cast<int32_t*>(field) = int16_t(_IS2Integer(text, 10));
            break;
        case Kind::Angle:
            *static_cast<double*>(field) = double(_IS2Integer(text, 10));
            break;
        case Kind::Face:
            static_cast<SmartPtr<IString>*>(field)->Attach(ISCreate(text));
            break;
        }
    }

    // The key of an attribute's name, by case and with equal length; null for none.
    static const Key* Find(tagREFString name)
    {
        int count = 0;
        const Key* keys = Table(&count);
        CREFString wanted(name);
        for (int i = 0; i < count; ++i)
            if (wanted.CompareI(keys[i].m_Name, 0) == S_OK)
                return &keys[i];
        return nullptr;
    }

    static void SaveXML(IVXRenderStyleImpl& style, IXMLStream* stream)
    {
        int count = 0;
        const Key* keys = Table(&count);
        for (int i = 0; i < count; ++i) {
            auto name = SmartPtr<IString>::Adopt(ISCreate(keys[i].m_Name));
            auto value = SmartPtr<IString>::Adopt(XMLText(style, keys[i]));
            stream->PutAttribute(name, 0, value, 0);
        }
    }

    // Only the attributes present are visited; a key not in the stream keeps its value.
    static void LoadXML(IVXRenderStyleImpl& style, IXMLStream* stream)
    {
        tagREFString name{0, nullptr};
        while (stream->NextAttribute(&name) >= 0) {
            tagREFString view{0, nullptr};
            SmartPtr<IUnknown> value;
            stream->GetAttribute(name, &view, value.Receive(), 1);
            if (const Key* key = Find(name))
                XMLParse(style, *key, CREFString(value.get()));
        }
    }

    // Raw bytes, colours unswapped; the face goes last as a string item.
    static void SaveFolder(IVXRenderStyleImpl& style, IFolderStream* stream)
    {
        int count = 0;
        const Key* keys = Table(&count);
        for (int i = 0; i < count; ++i) {
            if (keys[i].m_FolderSize < 1)
                continue;
            auto name = SmartPtr<IString>::Adopt(ISCreate(keys[i].m_Name));
            stream->WriteData(name, keys[i].m_Field(style), keys[i].m_FolderSize, 0);
        }
        auto face = SmartPtr<IString>::Adopt(ISCreate(L"FontFace"));
        stream->WriteString(face, style.m_FontFace);
    }

    // A missing item leaves its field as it was; a missing face keeps the old one.
    static void LoadFolder(IVXRenderStyleImpl& style, IFolderStream* stream)
    {
        int count = 0;
        const Key* keys = Table(&count);
        for (int i = 0; i < count; ++i) {
            if (keys[i].m_FolderSize < 1)
                continue;
            auto name = SmartPtr<IString>::Adopt(ISCreate(keys[i].m_Name));
            stream->ReadData(name, keys[i].m_Field(style), keys[i].m_FolderSize, 0);
        }
        auto face = SmartPtr<IString>::Adopt(ISCreate(L"FontFace"));
        auto read = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
        if (read && stream->ReadString(face, read) >= 0)
            style.m_FontFace = SmartPtr<IString>(read.get());
    }
};

// A stream that is both kinds receives both writings; flags are not read.
inline int32_t IVXRenderStyleImpl::Save(IDataStream* stream, int /*flags*/)
{
    if (auto xml = QueryAs<IXMLStream>(stream))
        RenderStyleKeys::SaveXML(*this, xml);
    if (auto folder = QueryAs<IFolderStream>(stream))
        RenderStyleKeys::SaveFolder(*this, folder);
    return S_OK;
}

inline int32_t IVXRenderStyleImpl::Load(IDataStream* stream, int /*flags*/)
{
    if (auto xml = QueryAs<IXMLStream>(stream))
        RenderStyleKeys::LoadXML(*this, xml);
    if (auto folder = QueryAs<IFolderStream>(stream))
        RenderStyleKeys::LoadFolder(*this, folder);
    return S_OK;
}
