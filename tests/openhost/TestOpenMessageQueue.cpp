#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <ZETSystem/ZETSysMessageQueue.h>

#include <QStringList>
#include <QtTest>

class TestOpenMessageQueue : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void thereIsNoQueueUntilOneIsInstalled()
    {
        QCOMPARE(ZETSysMessageQueue::GetMessageQueue(), nullptr);
        QVERIFY(ZETOpenMessageQueue::GetMessages().isEmpty());
        ZETOpenMessageQueue::Clear(); // nothing to do, and no fault
        ZETOpenMessageQueue::Install();
        QVERIFY(ZETSysMessageQueue::GetMessageQueue() != nullptr);
        ZETOpenMessageQueue::Remove();
        QCOMPARE(ZETSysMessageQueue::GetMessageQueue(), nullptr);
    }
    void typesHaveTheValuesThatCallersPass()
    {
        QCOMPARE(int(ZETSysMessageQueue::TypeNote), 0);
        QCOMPARE(int(ZETSysMessageQueue::TypeWarning), 1);
        QCOMPARE(int(ZETSysMessageQueue::TypeProblem), 2);
        QCOMPARE(sizeof(ZETSysMessageQueue::Type), sizeof(int));
    }
    void reportOfAnEmptyQueueIsEmpty()
    {
        ZETOpenMessageQueue::Install();
        QVERIFY(ZETSysMessageQueue::GetMessageQueue()->GetSimpleMessageReport().isEmpty());
    }
    void reportHasTheTextsInOrderOneALine()
    {
        ZETOpenMessageQueue::Install();
        ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue();
        queue->AddMessage(QStringLiteral("first"), ZETSysMessageQueue::TypeProblem);
        QCOMPARE(queue->GetSimpleMessageReport(), QStringLiteral("first"));
        queue->AddMessage(QStringLiteral("second"), ZETSysMessageQueue::TypeNote);
        queue->AddMessage(QStringLiteral("first"), ZETSysMessageQueue::TypeWarning); // told again
        QCOMPARE(queue->GetSimpleMessageReport(), QStringLiteral("first\nsecond\nfirst"));
    }
    void messagesKeepTheirTypes()
    {
        ZETOpenMessageQueue::Install();
        ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue();
        queue->AddMessage(QStringLiteral("a"), ZETSysMessageQueue::TypeWarning);
        queue->AddMessage(QStringLiteral("b"), ZETSysMessageQueue::TypeNote);
        const QList<ZETOpenMessage> messages = ZETOpenMessageQueue::GetMessages();
        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages[0].text, QStringLiteral("a"));
        QCOMPARE(messages[0].type, ZETSysMessageQueue::TypeWarning);
        QCOMPARE(messages[1].text, QStringLiteral("b"));
        QCOMPARE(messages[1].type, ZETSysMessageQueue::TypeNote);
    }
    void listenerHearsEachMessageAtOnce()
    {
        QStringList heard;
        ZETOpenMessageQueue::Install(
            [&](const ZETOpenMessage& message) { heard.append(message.text + u':' + QString::number(message.type)); });
        ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue();
        queue->AddMessage(QStringLiteral("a"), ZETSysMessageQueue::TypeProblem);
        QCOMPARE(heard, QStringList({QStringLiteral("a:2")}));
        queue->AddMessage(QStringLiteral("b"), ZETSysMessageQueue::TypeNote);
        QCOMPARE(heard, QStringList({QStringLiteral("a:2"), QStringLiteral("b:0")}));
    }
    void listenerMayAddMessagesAndTakeTheQueueAway()
    {
        ZETOpenMessageQueue::Install([](const ZETOpenMessage& message) {
            if (message.text.size() < 100) {
                ZETSysMessageQueue::GetMessageQueue()->AddMessage(message.text + u'+', message.type);
                return;
            }
            ZETOpenMessageQueue::Remove();
        });
        ZETSysMessageQueue::GetMessageQueue()->AddMessage(QStringLiteral("a"), ZETSysMessageQueue::TypeNote);
        QCOMPARE(ZETSysMessageQueue::GetMessageQueue(), nullptr);
    }
    void clearEmptiesTheQueueAndKeepsTheListener()
    {
        int heard = 0;
        ZETOpenMessageQueue::Install([&](const ZETOpenMessage&) { ++heard; });
        ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue();
        queue->AddMessage(QStringLiteral("a"), ZETSysMessageQueue::TypeNote);
        ZETOpenMessageQueue::Clear();
        QVERIFY(queue->GetSimpleMessageReport().isEmpty());
        QCOMPARE(ZETSysMessageQueue::GetMessageQueue(), queue);
        queue->AddMessage(QStringLiteral("b"), ZETSysMessageQueue::TypeNote);
        QCOMPARE(heard, 2);
        QCOMPARE(queue->GetSimpleMessageReport(), QStringLiteral("b"));
    }
    void installGivesAnEmptyQueueInPlaceOfTheOther()
    {
        ZETOpenMessageQueue::Install();
        ZETSysMessageQueue::GetMessageQueue()->AddMessage(QStringLiteral("a"), ZETSysMessageQueue::TypeNote);
        ZETOpenMessageQueue::Install();
        QVERIFY(ZETOpenMessageQueue::GetMessages().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestOpenMessageQueue)
#include "TestOpenMessageQueue.moc"
