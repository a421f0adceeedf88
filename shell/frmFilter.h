// The data filter of an analysis: a check list of "All data" and every level
// of every factor not left out, from which up to six filters are chosen, each
// of which makes a chart of its own. Its rules are those of FilterForm.
#pragma once

#include <QDialog>
#include <string>

#include "data/FilterForm.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace kestrow {

class frmFilter : public QDialog {
  Q_OBJECT

 public:
  // The grid's columns; the key column is hidden.
  enum Column { COL_CHECK, COL_FACTOR, COL_LEVEL, COL_KEY, COLUMNS };

  // sFilterList: the filters chosen so far, as comma-joined "factor;level"
  // keys in row order; sExcludeList: comma-joined numbers of factors that
  // cannot be filters.
  frmFilter(const Study& study, const std::string& sFilterList, const std::string& sExcludeList,
            QWidget* parent = nullptr);

  QLabel* lblHead;
  QTableWidget* grdFilter;
  QPushButton *cmdOK, *cmdCancel;

  // After OK: the keys of the ticked rows, comma-joined in row order.
  const std::string& FilterList() const { return form_.sFilterList; }
  // True only when OK closed the dialog.
  bool Result() const { return result_; }
  // Whether a tick was set or cleared.
  bool Changed() const { return form_.changed; }

  void cmdOK_Click();

 private:
  FilterForm form_;
  bool result_ = false;
};

}  // namespace kestrow
