// A recursive mutex held by value: a locked operation may call other locked
// operations of the same object.
#pragma once
#include <pthread.h>

class CResourceLock {
public:
    CResourceLock()
    {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        pthread_mutex_init(&m_Mutex, &attributes);
        pthread_mutexattr_destroy(&attributes);
    }
    virtual ~CResourceLock() { pthread_mutex_destroy(&m_Mutex); }
    CResourceLock(const CResourceLock&) = delete;
    CResourceLock& operator=(const CResourceLock&) = delete;

    virtual void Lock() { pthread_mutex_lock(&m_Mutex); }
    virtual void Unlock() { pthread_mutex_unlock(&m_Mutex); }

private:
    pthread_mutex_t m_Mutex;
};
