// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "designer/BoundView.h"

#include <QMetaProperty>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>
#include <memory>
#include <vector>

namespace {

/// One view, in Designer's box of widgets.
class ViewPlugin : public QDesignerCustomWidgetInterface
{
public:
    using Maker = std::function<QWidget*(QWidget*)>;

    ViewPlugin(const QMetaObject& type, QString purpose, Maker maker)
        : m_class(type)
        , m_name(QLatin1String(type.className()))
        , m_purpose(std::move(purpose))
        , m_maker(std::move(maker))
    {}

    QString name() const override { return m_name; }
    QString group() const override { return QStringLiteral("Orvane"); }
    QString toolTip() const override { return m_purpose; }
    QString whatsThis() const override { return m_purpose; }
    QString includeFile() const override { return QStringLiteral("orvane/BoundView.h"); }
    QIcon icon() const override { return {}; }
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override { return m_maker(parent); }
    QString domXml() const override
    {
        const QString object = m_name.at(0).toLower() + m_name.mid(1);
        QString paths; // names, not texts that are translated
        for (int k = BoundView::staticMetaObject.propertyOffset(); k < m_class.propertyCount();
             ++k) {
            if (m_class.property(k).isWritable())
                paths += QStringLiteral("<stringpropertyspecification name=\"%1\" "
                                        "type=\"singleline\" notr=\"true\"/>")
                             .arg(QLatin1String(m_class.property(k).name()));
        }
        return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">"
                              "<property name=\"geometry\"><rect><x>0</x><y>0</y>"
                              "<width>400</width><height>300</height></rect></property>"
                              "</widget><customwidgets><customwidget><class>%1</class>"
                              "<propertyspecifications>%3</propertyspecifications>"
                              "</customwidget></customwidgets></ui>")
            .arg(m_name, object, paths);
    }

private:
    const QMetaObject& m_class;
    QString m_name;
    QString m_purpose;
    Maker m_maker;
};

} // namespace

/// The plug-in that Designer, QUiLoader and QFormBuilder load.
class DesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    DesignerPlugin()
    {
        add<TimeView>(QStringLiteral("Samples over time"));
        add<EyeView>(QStringLiteral("Eye diagram"));
        add<IqView>(QStringLiteral("I and Q as a constellation"));
    }

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override
    {
        QList<QDesignerCustomWidgetInterface*> result;
        for (const auto& view : m_views)
            result += view.get();
        return result;
    }

private:
    template<class View>
    void add(const QString& purpose)
    {
        m_views.push_back(std::make_unique<ViewPlugin>(
            View::staticMetaObject, purpose, [](QWidget* parent) { return new View(parent); }));
    }

    std::vector<std::unique_ptr<ViewPlugin>> m_views;
};

#include "DesignerPlugin.moc"
