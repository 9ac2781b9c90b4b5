#pragma once

class FrequencyStoreListView;
class QWidget;

/// Makes a view of the memory channels; the parent owns it. Whoever registers the list knows no more of its
/// view.
FrequencyStoreListView* CreateMemorySystemListView(QWidget* parent, unsigned listId);
