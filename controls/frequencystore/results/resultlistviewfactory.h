#pragma once

class FrequencyStoreListView;
class QWidget;

/// Makes a view of the results of a classifier; the parent owns it. Whoever registers the list knows no more
/// of its view.
FrequencyStoreListView* CreateSearchMCDataListView(QWidget* parent, unsigned listId);
