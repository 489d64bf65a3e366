// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The parts of programs that docs/embedding.md and docs/density.md show.
#include <orvane/DensityPlot.h>
#include <orvane/EyeFigures.h>
#include <orvane/VCGLTimeDiagram.h>
#include <orvane/platform/glbase/axisDefinition.h>
#include <orvane/platform/gui/ColorSet.h>
#include <orvane/platform/startup/TranslationCenter.h>
#include <orvane/platform/values/Binding.h>
#include <orvane/platform/values/Persistant.h>

#include <QtWidgets>

static void setUp(const QString& folder)
{
    TranslationCenter::Instance().SetLanguage("de"); // "" is the system's
    ColorSet::Instance().SetScheme(ColorSet::Scheme::Light);
    values::Persistant::SetStoreFile(folder + "/views.ini"); // before the first view
}

static void feed(VCGLTimeDiagram& view, const double* samples, std::size_t count)
{
    view.SetXAxisRange(-1.0, 0.0);
    view.SetYAxisRange(-1.0, 1.0);
    view.SetBaudrate(1000.0);
    view.FillData(samples, count, true); // double or float; IQ: AddData(values, count)
}

static void keep(VCGLTimeDiagram& view, const QString& fileName)
{
    QImage picture(1600, 900, QImage::Format_RGB32);
    QPainter painter(&picture); // or on a QPrinter, QPdfWriter or QSvgGenerator
    view.RenderPicture(painter, picture.size());
    painter.end();
    picture.save(fileName);
}

static void bind(VCGLTimeDiagram& view)
{
    values::Binding samples(view, &VCGLTimeDiagram::SetData1_ValuePath, "Receiver/Samples");
}

static void label(VCGLTimeDiagram& view)
{
    view.GetXAxisDefinition().SetUnit("s");
    view.SetYUnit("V");
    view.GetDiagramMenu()->addAction("Measure");
    view.SetCaptionNote("25 °C");
    view.SetPaused(true);
}

static void count(const std::vector<float>& traces, std::int64_t firstSymbol)
{
    const density::TraceShape shape;
    // clang-format off
    density::DensityPlot plot(density::DensityPlot::Kind::Eye); // traces of 33 samples over two symbols
    plot.setSymbolRate(9600.0);
    plot.setUnit("V");
    plot.addData(traces.data(), traces.size(), firstSymbol); // trace after trace, one a symbol
    QObject::connect(&plot, &density::DensityPlot::passed, // a click tells who passed there, the newest first
                     [](const QVector<qint64>& symbols, const QPointF& place) { qDebug() << symbols << place; });
    plot.copyTraces(100'000, [shape](const density::KeptSignalPtr& traces) { // on the GUI thread
        QThreadPool::globalInstance()->start([traces, shape] {
            const auto figures = density::EyeFigures::of(*traces, shape);
        });
    });
    // clang-format on
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    setUp(folder.path());
    VCGLTimeDiagram view;
    const double samples[] = {-0.9, 0.9, -0.9, 0.9};
    feed(view, samples, 4);
    bind(view);
    label(view);
    count({0.0F, 1.0F}, 0);
    view.show();
    keep(view, folder.filePath("picture.png"));
    return application.exec();
}
