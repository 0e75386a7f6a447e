// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/AccessibleListView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace {

class RowAccessible;

// The list itself: one child per model row, made on demand and forgotten when the model
// changes, so a long list costs nothing until a screen reader walks it.
class ListAccessible : public QAccessibleWidget
{
public:
    explicit ListAccessible(AccessibleListView* view)
        : QAccessibleWidget(view, QAccessible::List)
    {
        QAbstractItemModel* model = view->model();
        if (model)
            watch(model);
    }
    ~ListAccessible() override
    {
        for (const auto& connection : m_connections)
            QObject::disconnect(connection);
        forgetRows();
    }

    AccessibleListView* view() const { return static_cast<AccessibleListView*>(widget()); }

    int childCount() const override
    {
        QAbstractItemModel* model = view()->model();
        return model ? model->rowCount(view()->rootIndex()) : 0;
    }
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const QPoint local = view()->viewport()->mapFromGlobal(QPoint(x, y));
        const QModelIndex index = view()->indexAt(local);
        return index.isValid() ? child(index.row()) : nullptr;
    }

    void forgetRows() const;

private:
    void watch(QAbstractItemModel* model)
    {
        // Rows are identified by position; any structural change invalidates them.
        const auto forget = [this] { forgetRows(); };
        m_connections = {
            QObject::connect(model, &QAbstractItemModel::modelReset, view(), forget),
            QObject::connect(model, &QAbstractItemModel::layoutChanged, view(), forget),
            QObject::connect(model, &QAbstractItemModel::rowsInserted, view(), forget),
            QObject::connect(model, &QAbstractItemModel::rowsRemoved, view(), forget),
        };
    }

    QList<QMetaObject::Connection> m_connections;
    mutable QHash<int, QAccessible::Id> m_rows;
};

class RowAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    RowAccessible(const ListAccessible* list, int row)
        : m_view(list->view())
        , m_row(row)
    {}

    bool isValid() const override
    {
        return m_view && m_view->model() && m_row < m_view->model()->rowCount(m_view->rootIndex());
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_view ? m_view->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override
    {
        return m_view ? QAccessible::queryAccessibleInterface(m_view.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        if (isValid())
            state.selected =
                m_view->selectionModel() && m_view->selectionModel()->isSelected(modelIndex());
        if (isValid() && !m_view->viewport()->rect().intersects(m_view->visualRect(modelIndex())))
            state.invisible = true;
        return state;
    }
    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect local = m_view->visualRect(modelIndex());
        return QRect(m_view->viewport()->mapToGlobal(local.topLeft()), local.size());
    }
    QString text(QAccessible::Text t) const override
    {
        if (!isValid())
            return {};
        switch (t) {
        case QAccessible::Name:
            return modelIndex().data(Qt::AccessibleTextRole).toString();
        case QAccessible::Description:
            return modelIndex().data(Qt::AccessibleDescriptionRole).toString();
        default:
            return {};
        }
    }
    void setText(QAccessible::Text, const QString&) override {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override
    {
        return isValid() ? m_view->rowActionNames(m_row) : QStringList();
    }
    void doAction(const QString& name) override
    {
        if (isValid() && m_view->rowActionNames(m_row).contains(name))
            m_view->triggerRowAction(m_row, name);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QModelIndex modelIndex() const { return m_view->model()->index(m_row, 0, m_view->rootIndex()); }

    QPointer<AccessibleListView> m_view;
    int m_row;
};

QAccessibleInterface* ListAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    if (const auto id = m_rows.value(index, 0))
        return QAccessible::accessibleInterface(id);
    auto* row = new RowAccessible(this, index);
    m_rows.insert(index, QAccessible::registerAccessibleInterface(row));
    return row;
}

int ListAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child));
    return m_rows.key(id, -1);
}

void ListAccessible::forgetRows() const
{
    const auto ids = m_rows.values();
    m_rows.clear();
    for (const QAccessible::Id id : ids)
        QAccessible::deleteAccessibleInterface(id);
}

QAccessibleInterface* listFactory(const QString&, QObject* object)
{
    if (auto* view = qobject_cast<AccessibleListView*>(object))
        return new ListAccessible(view);
    return nullptr;
}

} // namespace

AccessibleListView::AccessibleListView(QWidget* parent)
    : QListView(parent)
{
    installAccessibility();
}

AccessibleListView::~AccessibleListView() = default;

void AccessibleListView::installAccessibility()
{
    static bool installed = false;
    if (!installed) {
        QAccessible::installFactory(listFactory);
        installed = true;
    }
}
