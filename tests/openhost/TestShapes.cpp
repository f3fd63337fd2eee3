#include "tests/openhost/TestShapes.h"

#include <BRep_Builder.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepTools.hxx>
#include <gp_Circ.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESControl_Writer.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <STEPControl_Controller.hxx>
#include <STEPControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <numbers>

namespace
{
/*! A document that holds \a shape, with a name for each of its named parts. */
Handle(TDocStd_Document) MakeDocument(const TopoDS_Shape& shape, const TestShapes::Names& names)
{
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    const TDF_Label whole = shapes->AddShape(shape, false);
    for (const auto& [part, name] : names) {
        const TDF_Label label = shapes->AddSubShape(whole, part);
        TDataStd_Name::Set(label.IsNull() ? whole : label, name.constData());
    }
    return document;
}

template <typename Writer>
bool WriteDocument(const Handle(TDocStd_Document) & document, Writer& writer, const char* path)
{
    const bool isWritten = writer.Perform(document, path);
    XCAFApp_Application::GetApplication()->Close(document);
    return isWritten;
}
} // namespace

TopoDS_Face TestShapes::MakeQuarter()
{
    return BRepBuilderAPI_MakeFace(gp_Cylinder(gp_Ax3(), 100.0), 0.0, 0.5 * std::numbers::pi, 0.0, 200.0);
}

TopoDS_Face TestShapes::MakePlate()
{
    BRepBuilderAPI_MakeFace maker(gp_Pln(), 0.0, 100.0, 0.0, 100.0);
    const gp_Circ circle(gp_Ax2(gp_Pnt(50.0, 50.0, 0.0), gp_Dir(0.0, 0.0, 1.0)), 20.0);
    maker.Add(TopoDS::Wire(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle)).Wire().Reversed()));
    return maker.Face();
}

TopoDS_Compound TestShapes::MakeCompound(const QList<TopoDS_Shape>& shapes)
{
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    for (const TopoDS_Shape& shape : shapes)
        builder.Add(compound, shape);
    return compound;
}

void TestShapes::SilenceKernel()
{
    Message::DefaultMessenger()->ChangePrinters().Clear();
}

bool TestShapes::WriteStep(const TopoDS_Shape& shape, const char* path, const char* unit)
{
    STEPControl_Controller::Init();
    Interface_Static::SetCVal("write.step.unit", unit);
    STEPControl_Writer writer;
    const bool isWritten =
        writer.Transfer(shape, STEPControl_AsIs) == IFSelect_RetDone && writer.Write(path) == IFSelect_RetDone;
    Interface_Static::SetCVal("write.step.unit", "MM");
    return isWritten;
}

bool TestShapes::WriteIges(const TopoDS_Shape& shape, const char* path, const char* unit)
{
    IGESControl_Controller::Init();
    IGESControl_Writer writer(unit, 0);
    if (!writer.AddShape(shape))
        return false;
    writer.ComputeModel();
    return writer.Write(path);
}

bool TestShapes::WriteBrep(const TopoDS_Shape& shape, const char* path)
{
    return BRepTools::Write(shape, path);
}

bool TestShapes::WriteNamedStep(const TopoDS_Shape& shape, const char* path, const Names& names)
{
    STEPCAFControl_Controller::Init();
    Interface_Static::SetIVal("write.stepcaf.subshapes.name", 1);
    STEPCAFControl_Writer writer;
    return WriteDocument(MakeDocument(shape, names), writer, path);
}

bool TestShapes::WriteNamedIges(const TopoDS_Shape& shape, const char* path, const Names& names)
{
    IGESControl_Controller::Init();
    IGESCAFControl_Writer writer;
    return WriteDocument(MakeDocument(shape, names), writer, path);
}
