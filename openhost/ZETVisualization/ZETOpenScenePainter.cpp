#include "openhost/ZETVisualization/ZETOpenScenePainter.h"

#include "openhost/ZETVisualization/ZETOpenDrawing_p.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QXmlStreamWriter>

using namespace Qt::Literals::StringLiterals;

namespace
{
void PaintItem(QPainter& painter, const ZETOpenDrawing::Item& item, double lineScale)
{
    const QColor color = item.options.GetColor();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(
        QPen(color, lineScale * item.options.GetLineThickness(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QPolygonF& run : item.runs)
        painter.drawPolyline(run);
    const bool isTarget = item.options.GetPointSymbol() == ZETVisOptions::SymbolTarget;
    painter.setPen(isTarget ? QPen(color, 2.0) : QPen(Qt::NoPen));
    painter.setBrush(isTarget ? Qt::NoBrush : QBrush(color));
    for (const QPointF& marker : item.markers) {
        if (!isTarget) {
            painter.drawEllipse(marker, lineScale * ZETOpenDrawing::dotRadius, lineScale * ZETOpenDrawing::dotRadius);
            continue;
        }
        const QPointF across(ZETOpenDrawing::targetRadius, 0.0);
        const QPointF along(0.0, ZETOpenDrawing::targetRadius);
        painter.drawEllipse(marker, ZETOpenDrawing::targetRadius, ZETOpenDrawing::targetRadius);
        painter.drawLine(marker - across, marker + across);
        painter.drawLine(marker - along, marker + along);
    }
}

void PaintText(QPainter& painter, const ZETOpenDrawing::Text& text)
{
    QFont font(u"Sans"_s);
    font.setPixelSize(qRound(text.size));
    painter.setFont(font);
    painter.setPen(text.color);
    const double shift = text.isRight ? QFontMetricsF(font).horizontalAdvance(text.text) : 0.0;
    painter.drawText(text.place - QPointF(shift, 0.0), text.text);
}

/*! The document, element by element. Numbers have two decimals, which is far below a pixel's size. */
class SvgWriter
{
public:
    explicit SvgWriter(const ZETOpenDrawing& toWrite)
        : drawing(toWrite)
    {
    }

    QByteArray Write()
    {
        xml.writeStartDocument();
        xml.writeStartElement(u"svg"_s);
        xml.writeDefaultNamespace(u"http://www.w3.org/2000/svg"_s);
        xml.writeAttribute(u"viewBox"_s, u"0 0 %1 %2"_s.arg(drawing.size.width()).arg(drawing.size.height()));
        xml.writeAttribute(u"width"_s, QString::number(drawing.size.width()));
        xml.writeAttribute(u"height"_s, QString::number(drawing.size.height()));
        xml.writeAttribute(u"font-family"_s, u"sans-serif"_s);
        xml.writeEmptyElement(u"rect"_s);
        xml.writeAttribute(u"width"_s, u"100%"_s);
        xml.writeAttribute(u"height"_s, u"100%"_s);
        xml.writeAttribute(u"fill"_s, drawing.background.name());
        WriteFacets();
        WriteItems();
        WriteScaleBar();
        for (const ZETOpenDrawing::Text& text : drawing.texts)
            WriteText(text);
        xml.writeEndDocument();
        return bytes;
    }

private:
    static QString Describe(const QPointF& point)
    {
        return QString::number(point.x(), 'f', 2) + u',' + QString::number(point.y(), 'f', 2);
    }

    static QString Describe(const QPolygonF& run)
    {
        QString path = u'M' + Describe(run.first());
        for (qsizetype i = 1; i < run.size(); ++i)
            path += u'L' + Describe(run[i]);
        return path;
    }

    void WriteFacets()
    {
        if (drawing.facets.isEmpty())
            return;
        xml.writeStartElement(u"g"_s);
        xml.writeAttribute(u"class"_s, u"surfaces"_s);
        xml.writeAttribute(u"stroke-width"_s, u"1"_s); // closes the seams that smoothed edges leave
        for (qsizetype i = 0; i < drawing.facets.size();) {
            const QString color = drawing.facets[i].color.name();
            QString path; // neighbours of one shade are one path
            for (; i < drawing.facets.size() && drawing.facets[i].color.name() == color; ++i)
                path += Describe(drawing.facets[i].corners) + u'z';
            xml.writeEmptyElement(u"path"_s);
            xml.writeAttribute(u"fill"_s, color);
            xml.writeAttribute(u"stroke"_s, color);
            xml.writeAttribute(u"d"_s, path);
        }
        xml.writeEndElement();
    }

    /*! Items of one object that follow each other share its group. */
    void WriteItems()
    {
        for (qsizetype i = 0; i < drawing.items.size();) {
            const QString label = drawing.items[i].label;
            xml.writeStartElement(u"g"_s);
            xml.writeAttribute(u"class"_s, u"object"_s);
            xml.writeAttribute(u"data-label"_s, label);
            xml.writeTextElement(u"title"_s, label);
            for (; i < drawing.items.size() && drawing.items[i].label == label; ++i)
                WriteItem(drawing.items[i]);
            xml.writeEndElement();
        }
    }

    void WriteItem(const ZETOpenDrawing::Item& item)
    {
        if (!item.runs.isEmpty()) {
            QString path;
            for (const QPolygonF& run : item.runs)
                path += Describe(run);
            xml.writeEmptyElement(u"path"_s);
            xml.writeAttribute(u"class"_s, u"lines"_s);
            WriteStroke(item.options.GetColor(), drawing.lineScale * item.options.GetLineThickness());
            xml.writeAttribute(u"d"_s, path);
        }
        for (const QPointF& marker : item.markers)
            WriteMarker(marker, item.options);
    }

    void WriteMarker(const QPointF& at, const ZETVisOptions& options)
    {
        const bool isTarget = options.GetPointSymbol() == ZETVisOptions::SymbolTarget;
        if (!isTarget) {
            xml.writeEmptyElement(u"circle"_s);
            xml.writeAttribute(u"class"_s, u"dot"_s);
            xml.writeAttribute(u"cx"_s, QString::number(at.x(), 'f', 2));
            xml.writeAttribute(u"cy"_s, QString::number(at.y(), 'f', 2));
            xml.writeAttribute(u"r"_s, QString::number(drawing.lineScale * ZETOpenDrawing::dotRadius));
            xml.writeAttribute(u"fill"_s, options.GetColor().name());
            return;
        }
        constexpr double radius = ZETOpenDrawing::targetRadius;
        xml.writeEmptyElement(u"path"_s);
        xml.writeAttribute(u"class"_s, u"target"_s);
        WriteStroke(options.GetColor(), 2.0);
        const QString ring = u"m%1,0a%1,%1 0 1 0 %2,0a%1,%1 0 1 0 %3,0h%2m%1,-%1v%3"_s;
        xml.writeAttribute(u"d"_s, u'M' + Describe(at) + ring.arg(radius).arg(-2 * radius).arg(2 * radius));
    }

    void WriteStroke(const QColor& color, double width)
    {
        xml.writeAttribute(u"fill"_s, u"none"_s);
        xml.writeAttribute(u"stroke"_s, color.name());
        if (color.alpha() != 255)
            xml.writeAttribute(u"stroke-opacity"_s, QString::number(color.alphaF(), 'f', 2));
        xml.writeAttribute(u"stroke-width"_s, QString::number(width));
        xml.writeAttribute(u"stroke-linecap"_s, u"round"_s);
        xml.writeAttribute(u"stroke-linejoin"_s, u"round"_s);
    }

    void WriteScaleBar()
    {
        if (drawing.scaleBar.isNull())
            return;
        xml.writeEmptyElement(u"path"_s);
        xml.writeAttribute(u"class"_s, u"scale"_s);
        WriteStroke(ZETOpenDrawing::Text().color, 2.0);
        xml.writeAttribute(u"d"_s, Describe(QPolygonF({drawing.scaleBar.p1(), drawing.scaleBar.p2()})));
    }

    void WriteText(const ZETOpenDrawing::Text& text)
    {
        xml.writeStartElement(u"text"_s);
        xml.writeAttribute(u"x"_s, QString::number(text.place.x(), 'f', 2));
        xml.writeAttribute(u"y"_s, QString::number(text.place.y(), 'f', 2));
        xml.writeAttribute(u"font-size"_s, QString::number(text.size));
        xml.writeAttribute(u"fill"_s, text.color.name());
        if (text.isRight)
            xml.writeAttribute(u"text-anchor"_s, u"end"_s);
        xml.writeCharacters(text.text);
        xml.writeEndElement();
    }

    const ZETOpenDrawing& drawing;
    QByteArray bytes;
    QXmlStreamWriter xml{&bytes};
};
} // namespace

QImage ZETOpenScenePainter::PaintImage(const ZETVisEnvironment& scene, const ZETOpenPicture& picture)
{
    const ZETOpenDrawing drawing = ZETOpenDrawing::Make(scene, picture);
    QImage image(drawing.size, QImage::Format_RGB32);
    image.fill(drawing.background);
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    for (const ZETOpenDrawing::Facet& facet : drawing.facets) { // not smoothed, which would leave seams
        painter.setBrush(facet.color);
        painter.drawConvexPolygon(facet.corners);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    for (const ZETOpenDrawing::Item& item : drawing.items)
        PaintItem(painter, item, drawing.lineScale);
    painter.setPen(QPen(ZETOpenDrawing::Text().color, 2.0));
    painter.drawLine(drawing.scaleBar);
    for (const ZETOpenDrawing::Text& text : drawing.texts)
        PaintText(painter, text);
    return image;
}

QByteArray ZETOpenScenePainter::WriteSvg(const ZETVisEnvironment& scene, const ZETOpenPicture& picture)
{
    const ZETOpenDrawing drawing = ZETOpenDrawing::Make(scene, picture);
    return SvgWriter(drawing).Write();
}
