// Saved properties read back from any text: the bytes, widened one by one, are the
// XML form that a show holds for an object's property table.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "persistence/PropInterrogate.h"
#include "runtime/ObjectInfo.h"

namespace {

// One property of each kind that the XML form reads, under the keys 1 to 7.
class CFuzzProps : public CObject<CFuzzProps>,
                   public IObjectInfoImpl<CFuzzProps>,
                   public IUIPropInterrogateImpl<CFuzzProps, IUIPropInterrogateEx, 10> {
public:
    static constexpr wchar_t kObjectName[] = L"FuzzProps";
    using Frame = IUIPropInterrogateImpl<CFuzzProps, IUIPropInterrogateEx, 10>;
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Frame>>;

    int32_t FinalConstruct() override
    {
        Prop(1, &m_Byte, PROPTYPE_BYTE);
        Prop(2, &m_Color, PROPTYPE_COLOR);
        Prop(3, &m_Int, PROPTYPE_INT);
        Prop(4, &m_Decimal, PROPTYPE_DECIMAL);
        Prop(5, &m_Double, PROPTYPE_DOUBLE);
        Prop(6, &m_Text, PROPTYPE_STRING);
        Prop(7, &m_Path, PROPTYPE_STRING | PROPTYPE_PATH);
        return S_OK;
    }

    unsigned char m_Byte = 0;
    int32_t m_Color = 0;
    int32_t m_Int = 0;
    int32_t m_Decimal = 0;
    double m_Double = 0;
    SmartPtr<IString> m_Text;
    SmartPtr<IString> m_Path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 64 * 1024)
        return 0;
    std::vector<wchar_t> text(data, data + size);
    IID iid = IUIPropInterrogateEx::Iid();
    SmartPtr<IUIPropInterrogateEx> props;
    CObject<CFuzzProps>::_CreateInstance(nullptr, &iid, props.ReceiveVoid());
    iid = IDataStream::Iid();
    auto reader = SmartPtr<IDataStream>::Adopt(
        static_cast<IDataStream*>(static_cast<void*>(CreateObject(REFLiteral(L"XMLStream"), &iid))));
    if (!props || !reader)
        __builtin_trap();
    reader->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
    props->UIPropInterrogate_LoadXML(nullptr, reader, 0);
    return 0;
}
