#pragma once

class FrequencyStoreListView;
class QWidget;

/// Makes a view of the local target list; the parent owns it. Whoever registers the list knows no more of its
/// view.
FrequencyStoreListView* CreateWkfListView(QWidget* parent, unsigned listId);
