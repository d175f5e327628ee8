// A step that runs to its end inside TurnOn, in the caller's thread: nothing to
// stop, nothing to ask while it runs, and the time of the last run to report.
#pragma once
#include <sys/time.h>

#include "runtime/VXCore.h"

// The timer part of a step.
struct CTimer {
    CTimer() { gettimeofday(&m_Start, nullptr); }

    // Milliseconds since m_Start: seconds and microseconds are two separate
    // differences, so the second may be negative.
    double Elapsed() const
    {
        timeval now{};
        gettimeofday(&now, nullptr);
        return double(now.tv_sec - m_Start.tv_sec) * 1000.0 + double(now.tv_usec - m_Start.tv_usec) / 1000.0;
    }

    double m_ExecutionTime = 0;
    timeval m_Start{};
};

// T provides Execute().
template <class T, class Base = IStep, class Timer = CTimer> class IStepImplSynchronous : public Base, public Timer {
public:
    int32_t TurnOn() override
    {
        gettimeofday(&this->m_Start, nullptr);
        int32_t result = static_cast<T*>(this)->Execute();
        this->m_ExecutionTime = this->Elapsed();
        return result;
    }

    // A synchronous step can't be stopped.
    int32_t TurnOff() override { return E_NOTIMPL; }
    int32_t IsRunning() override { return 0; }

    int32_t get_ExecutionTime(double* time) override
    {
        if (time)
            *time = this->m_ExecutionTime;
        return S_OK;
    }

protected:
    ~IStepImplSynchronous() = default;
};
