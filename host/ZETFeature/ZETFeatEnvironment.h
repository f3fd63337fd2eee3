#pragma once

#include <ZETHostGlobal.h>
#include <ZETVisualization/ZETVisEnvironment.h>

#include <QByteArray>
#include <QList>

/*! A scene that shows model features: it finds the display object of a feature by class name. */
class ZETHOST_EXPORT ZETFeatEnvironment : public ZETVisEnvironment
{
    Q_OBJECT

public:
    ZETFeatEnvironment();
    ~ZETFeatEnvironment() override;

    /*! Binds a display object class to the features of the named classes and of those derived from them. The class
     *  needs an invokable constructor `(const ZETFeatEnvironment*, ZETFeatObject*)`. */
    static void RegisterGlobalVisualizationObject(const QList<QByteArray>& classNames,
                                                  const QMetaObject* visObjectClass);
    static void UnregisterGlobalVisualizationObject(const QMetaObject* visObjectClass);
};
