#pragma once

#include "openhost/layup/ZETOpenJson.h"

#include <ZETHostGlobal.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class ZETCompRoot;
class ZETFeatContainer;

/*! What was read from a layup file. Destroys the model with itself. */
struct ZETHOST_EXPORT ZETOpenLayupModel {
    ZETOpenLayupModel();
    ZETOpenLayupModel(ZETOpenLayupModel&&) noexcept;
    ZETOpenLayupModel& operator=(ZETOpenLayupModel&&) noexcept;
    ~ZETOpenLayupModel();

    std::unique_ptr<ZETFeatContainer> container;
    ZETCompRoot* root = nullptr;      //!< owned by the container
    QString unit;                     //!< the unit of the file: "mm", "cm", "m" or "in"; the model itself is in mm
    QList<ZETOpenJsonError> warnings; //!< what features told of their state when they were first updated
};

/*! The layup file: a composite model as JSON, told in docs/layup-file.md and schema/layup.schema.json. */
namespace ZETOpenLayupFile
{
/*! Called with the absolute path of each shape file when it is about to be read. */
using ShapeListener = std::function<void(const QString& path)>;

/*! Reads the file and builds its model, with all features updated. Throws ZETOpenJsonError for the first fault.
 *
 *  Targets, projectors, extra geometry, parameters and texts are made by the names of their classes, so a library that
 *  registers them must be loaded. */
ZETHOST_EXPORT ZETOpenLayupModel Load(const QString& file, const ShapeListener& beforeShape = {});
/*! The same from \a content; \a file gives the folder that paths are relative to, and its name to messages. */
ZETHOST_EXPORT ZETOpenLayupModel Load(const QString& file, const QByteArray& content);

/*! The keys that each kind of object in the file may have, by the name that the kind has in the schema. */
ZETHOST_EXPORT const QMap<QString, QStringList>& GetKnownKeys();
} // namespace ZETOpenLayupFile
