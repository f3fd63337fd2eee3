#pragma once

#include "JobCommandLine.h"

#include "openhost/ZETVisualization/ZETOpenView.h"

#include <QSize>
#include <QStringList>

#include <optional>

/*! What the user asked for behind "zetlaser-job preview". */
struct JobPreviewCommandLine {
    JobCommandLine job;                    //!< options that a preview shares with a job that writes
    std::optional<ZETOpenView::Side> side; //!< unset: the side that the plies are laid from
    QSize size{1600, 1000};                //!< of the pictures, in pixels
    QStringList formats;                   //!< of GetFormats
    bool plyPictures = false;
    QString libraryFolder; //!< where three.js stands
    bool isHelp = false;

    /*! "html", "png", "svg". */
    static const QStringList& GetFormats();
};

/*! Reads the arguments behind the word "preview". Throws JobError that tells the first fault. */
JobPreviewCommandLine ParsePreviewCommandLine(const QStringList& arguments);

/*! The text of `zetlaser-job preview --help`, with a line end behind each line. */
QString GetPreviewHelpText();
