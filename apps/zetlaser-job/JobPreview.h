#pragma once

#include "JobSettings.h"

#include "openhost/ZETVisualization/ZETOpenView.h"

#include <QSize>
#include <QStringList>

#include <optional>

/*! What a preview is told beside the settings of the job. */
struct JobPreviewOptions {
    std::optional<ZETOpenView::Side> side; //!< unset: the side that the plies are laid from
    QSize size{1600, 1000};                //!< of the pictures, in pixels
    QStringList formats;                   //!< of "html", "png", "svg"
    bool plyPictures = false;
    QString libraryFolder; //!< where three.js stands
};

/*! Reads the layup file, and writes the page and the pictures. The settings of the job are complete: flags and settings
 *  file. Needs a QGuiApplication. Throws JobError. */
void RunPreview(const QString& layupFile, const JobSettings& settings, const JobPreviewOptions& previewOptions);
