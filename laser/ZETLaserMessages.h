#pragma once

#include <ZETSystem/ZETSysMessageQueue.h>

#include <QString>

/*! What a job tells its user, through the application's message queue. */
namespace ZETLaserMessages
{

/*! Queues \a text, which is translated already. Without a message queue it is dropped. */
inline void Add(const QString& text, ZETSysMessageQueue::Type type)
{
    if (auto* const queue = ZETSysMessageQueue::GetMessageQueue())
        queue->AddMessage(text, type);
}

} // namespace ZETLaserMessages
