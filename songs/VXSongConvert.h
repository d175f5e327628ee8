// "VXSongConvert": the step that cuts a Bible given as one long text into a folder
// of ".bbl" files, one a book, and the "bible.ini" that lists them. The Bible side
// loads that folder. Its parameters are the input file and the target folder.
#pragma once
#include "persistence/InputParametersImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"
#include "runtime/VXCore.h"
#include "songs/StepImplSynchronous.h"

class CVXSongConvert : public CObject<CVXSongConvert>,
                       public IObjectInfoImpl<CVXSongConvert>,
                       public InputParametersImpl<CVXSongConvert, IParameters>,
                       public IStepImplSynchronous<CVXSongConvert, IStep, CTimer>,
                       public IStepEx,
                       public IUIPropertyPageSpecify {
public:
    static constexpr wchar_t kObjectName[] = L"VXSongConvert";
    using Parameters = InputParametersImpl<CVXSongConvert, IParameters>;
    using Interfaces =
        QiList<Entry<IObjectInfo>, Entry<IUIPropertyPageSpecify>, Entry<IStep>, Entry<IStepEx>, Chain<Parameters>,
               Forward<IInputParameters, &CVXSongConvert::m_Inputs>>;

    // The indexes of the parameters; the conversion reads them by position.
    static constexpr int kInFileItem = 0;
    static constexpr int kSavePath = 1;

    int32_t FinalConstruct() override;

    // IStepEx: nothing to prepare or to finish.
    int32_t Initialize() override { return S_OK; }
    int32_t Finalize() override { return S_OK; }

    // IUIPropertyPageSpecify: the framework's page that edits parameters.
    int32_t GetPages(int mode, INamedCollection** pages, IUnknown** context) override;

    // The conversion; TurnOn runs it.
    int32_t Execute();
};
