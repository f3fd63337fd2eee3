#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <ZETSystem/ZETSysMessageQueue.h>

#include <QStringList>

class ZETSysMessageQueuePrivate
{
public:
    static std::unique_ptr<ZETSysMessageQueue, void (*)(ZETSysMessageQueue*)>& Application()
    {
        static std::unique_ptr<ZETSysMessageQueue, void (*)(ZETSysMessageQueue*)> queue(nullptr, &Delete);
        return queue;
    }
    static ZETSysMessageQueue* New(const ZETOpenMessageQueue::Listener& listener)
    {
        auto* queue = new ZETSysMessageQueue;
        queue->d->listener = listener;
        return queue;
    }
    static ZETSysMessageQueuePrivate& Of(ZETSysMessageQueue& queue) { return *queue.d; }

    QList<ZETOpenMessage> messages;
    ZETOpenMessageQueue::Listener listener;

private:
    static void Delete(ZETSysMessageQueue* queue) { delete queue; }
};

ZETSysMessageQueue::ZETSysMessageQueue()
    : d(std::make_unique<ZETSysMessageQueuePrivate>())
{
}

ZETSysMessageQueue::~ZETSysMessageQueue() = default;

ZETSysMessageQueue* ZETSysMessageQueue::GetMessageQueue()
{
    return ZETSysMessageQueuePrivate::Application().get();
}

void ZETSysMessageQueue::AddMessage(const QString& text, Type type)
{
    const ZETOpenMessage message{text, type};
    d->messages.append(message);
    // A copy: the listener may add a message, or take the queue away.
    if (const ZETOpenMessageQueue::Listener listener = d->listener)
        listener(message);
}

QString ZETSysMessageQueue::GetSimpleMessageReport() const
{
    QStringList texts;
    texts.reserve(d->messages.size());
    for (const ZETOpenMessage& message : d->messages)
        texts.append(message.text);
    return texts.join(u'\n');
}

void ZETOpenMessageQueue::Install(const Listener& listener)
{
    ZETSysMessageQueuePrivate::Application().reset(ZETSysMessageQueuePrivate::New(listener));
}

void ZETOpenMessageQueue::Remove()
{
    ZETSysMessageQueuePrivate::Application().reset();
}

void ZETOpenMessageQueue::Clear()
{
    if (ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue())
        ZETSysMessageQueuePrivate::Of(*queue).messages.clear();
}

QList<ZETOpenMessage> ZETOpenMessageQueue::GetMessages()
{
    ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue();
    return queue != nullptr ? ZETSysMessageQueuePrivate::Of(*queue).messages : QList<ZETOpenMessage>();
}
