#pragma once

#include <ZETHostGlobal.h>

#include <QString>
#include <QtGlobal>

#include <memory>

class ZETSysMessageQueuePrivate;

/*! The store of messages for the user during a job. Made by the host only. */
class ZETHOST_EXPORT ZETSysMessageQueue
{
public:
    enum Type : int {
        TypeNote = 0,    //!< a note, or a success
        TypeWarning = 1, //!< a warning about model data
        TypeProblem = 2  //!< what can't be written
    };

    /*! The application's queue; null if there is none, and then callers drop their messages. */
    static ZETSysMessageQueue* GetMessageQueue();

    /*! Appends a message. Neither blocks nor shows anything by itself. */
    void AddMessage(const QString& text, Type type);
    /*! The texts of all messages, in order, one a line, without a line end behind the last. */
    QString GetSimpleMessageReport() const;

private:
    friend class ZETSysMessageQueuePrivate;
    ZETSysMessageQueue();
    ~ZETSysMessageQueue();
    Q_DISABLE_COPY_MOVE(ZETSysMessageQueue)
    std::unique_ptr<ZETSysMessageQueuePrivate> d;
};
