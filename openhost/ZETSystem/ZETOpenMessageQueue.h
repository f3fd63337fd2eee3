#pragma once

#include <ZETHostGlobal.h>
#include <ZETSystem/ZETSysMessageQueue.h>

#include <QList>
#include <QString>

#include <functional>

/*! One message of the queue. */
struct ZETOpenMessage {
    QString text;
    ZETSysMessageQueue::Type type;
};

/*! The open host's side of the message queue: who has one, and what is in it. */
namespace ZETOpenMessageQueue
{
/*! Called for each message when it is added, before AddMessage returns. */
using Listener = std::function<void(const ZETOpenMessage&)>;

/*! Gives the application an empty queue, in place of the one that it has. Without an Install there is no queue. */
ZETHOST_EXPORT void Install(const Listener& listener = Listener());
/*! Takes the queue away. */
ZETHOST_EXPORT void Remove();
/*! Empties the queue; the listener stays. Without a queue nothing happens. */
ZETHOST_EXPORT void Clear();
/*! The messages in order; empty without a queue. */
ZETHOST_EXPORT QList<ZETOpenMessage> GetMessages();
} // namespace ZETOpenMessageQueue
