#pragma once

#include "openhost/ZETVisualization/ZETOpenScenePainter.h"

#include <ZETVisualization/ZETVisOptions.h>

#include <QColor>
#include <QLineF>
#include <QPolygonF>

/*! A scene in the pixels of a picture, y down: what QPainter and the SVG writer put on their paper, in this order. */
struct ZETOpenDrawing {
    struct Facet {
        QPolygonF corners;
        QColor color;
    };
    struct Text {
        QPointF place; //!< of the base line
        QString text;
        double size = 15.0; //!< in pixels
        QColor color = QColor(225, 230, 236);
        bool isRight = false; //!< ends at its place instead of beginning there
    };
    /*! One primitive. */
    struct Item {
        QString label;          //!< of its object
        QList<QPolygonF> runs;  //!< of at least two points each
        QList<QPointF> markers; //!< of the symbol of the options
        ZETVisOptions options;
    };

    QSize size;
    double lineScale = 1.0;
    QColor background{18, 22, 28};
    QList<Facet> facets; //!< far ones first
    QList<Item> items;   //!< in the order of drawing
    QLineF scaleBar;     //!< null if nothing is shown
    QList<Text> texts;

    static ZETOpenDrawing Make(const ZETVisEnvironment& scene, const ZETOpenPicture& picture);

    static constexpr double dotRadius = 2.0;
    static constexpr double targetRadius = 8.0;
};
