// Parameter objects: named values with descriptors and flags, and bindable inputs.
#pragma once
#include "runtime/interfaces/Streams.h"

struct PARAMETEROBJECT;

struct IParameters : INamedCollection {
    static const IID& Iid() { return IID_IParameters; }
    virtual int32_t Iterate(int index, IString** name, IVariant** value, IUnknown** descriptor, int* flags) = 0;
    virtual int32_t get_ItemVariant(int index, IVariant** out) = 0;
    virtual int32_t put_Item(int index, IUnknown* value) = 0;
    virtual int32_t get_ItemDescriptor(int index, IUnknown** descriptor) = 0;
    virtual int32_t put_ItemDescriptor(int index, IUnknown* descriptor) = 0;
    virtual int32_t get_ItemFlags(int index, int* flags) = 0;
    virtual int32_t put_ItemFlags(int index, int flags) = 0;
    virtual int32_t Get(IUnknown* key, IUnknown** value, IUnknown** descriptor, int* flags, int mode) = 0;
    virtual int32_t AddNOLOCK(IString* name, IUnknown* value, IUnknown* descriptor, int flags) = 0;
    virtual int32_t get_ItemNOLOCK(int index, IUnknown** out) = 0;
    virtual int32_t put_ItemNOLOCK(int index, IUnknown* value) = 0;
    virtual int32_t get_ItemNameNOLOCK(int index, IString** name) = 0;
    virtual int32_t Copy(IParameters* source) = 0;
    virtual int32_t Sort(int mode) = 0;
    virtual int32_t Params_SaveCSV(IDataStream* stream, int mode) = 0;
    virtual int32_t Params_SaveXML(IDataStream* stream, int mode) = 0;
    virtual int32_t Params_LoadXML(IDataStream* stream, int mode, int reserved) = 0;
    virtual int32_t Params_SaveFolderStream(IDataStream* stream, int mode) = 0;
    virtual int32_t Params_LoadFolderStream(IDataStream* stream, int mode) = 0;
    virtual int32_t Params_SaveXMLUnk(IDataStream* stream, int mode) = 0;
    virtual int32_t Params_LoadXMLUnk(IDataStream* stream, int mode) = 0;
    virtual int32_t getParameter(PARAMETEROBJECT* item, IUnknown** out) = 0;
};

struct IParametersCreatable : IUnknown {
    static const IID& Iid() { return IID_IParametersCreatable; }
    virtual int32_t Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags) = 0;
};

struct IInputParameter : IUnknown {
    static const IID& Iid() { return IID_IInputParameter; }
    // The bound value; negative if unbound.
    virtual int32_t get_Value(IUnknown** out) = 0;
    virtual int32_t get_Name(IString** name) = 0;
    virtual int32_t put_Name(tagREFString name) = 0;
    virtual int32_t get_Target(IUnknown** target) = 0;
    virtual int32_t put_Target(IUnknown* target) = 0;
    virtual int32_t get_Source(IUnknown** source) = 0;
    virtual int32_t put_Source(IUnknown* source) = 0;
    virtual int32_t get_Flags(int* flags) = 0;
    virtual int32_t put_Flags(int flags) = 0;
};

struct IInputParameters : IUnknown {
    static const IID& Iid() { return IID_IInputParameters; }
    virtual int32_t get_Count(int* count) = 0;
    virtual int32_t get_Item(int index, IUnknown** item) = 0;
};

struct IBindableObject : IUnknown {
    static const IID& Iid() { return IID_IBindableObject; }
    virtual int32_t Bind(INamedCollection* collection, IUnknown* context) = 0;
};

// A step of work that a host places in a job.
struct IStep : IUnknown {
    static const IID& Iid() { return IID_IStep; }
    virtual int32_t TurnOn() = 0;
    virtual int32_t TurnOff() = 0;
    virtual int32_t IsRunning() = 0;
    // Milliseconds of the last run.
    virtual int32_t get_ExecutionTime(double* time) = 0;
};

struct IStepEx : IUnknown {
    static const IID& Iid() { return IID_IStepEx; }
    virtual int32_t Initialize() = 0;
    virtual int32_t Finalize() = 0;
};
// Flags of the entries that an XML file's parameters hold for the attributes of an
// element, ahead of its children, so that a reader can tell the two apart.
constexpr int PARAMETER_XMLATTRIBUTE = 0x100000;
