#pragma once

struct EntryColumns;
class FrequencyStoreListView;
class QWidget;

/// Makes a view of the frequencies of interest; the parent owns it. Whoever registers the list knows no more
/// of its view.
FrequencyStoreListView* CreateSearchMCNOIListView(QWidget* parent, unsigned listId);
/// What such a view shows of each entry.
const EntryColumns& NoiColumns();
