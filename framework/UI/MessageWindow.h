// "MessageWindow": a note that stays up while a long job runs. With no window of
// its own to open, it puts its text on the error stream when that is a terminal,
// and wipes the line again when it goes; elsewhere (a pipe, a log) it says nothing,
// so that a script's output stays as it was.
#pragma once
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CMessageWindow : public CObject<CMessageWindow>, public IObjectInfoImpl<CMessageWindow>, public IMessageWindow {
public:
    static constexpr wchar_t kObjectName[] = L"MessageWindow";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IMessageWindow>>;

    int32_t FinalConstruct() override;
    void FinalRelease() override;

    // Replaces what is shown; null shows nothing.
    int32_t Show(IString* text) override;

private:
    void Wipe();

    int m_Descriptor = -1;
    bool m_Shown = false;
};
