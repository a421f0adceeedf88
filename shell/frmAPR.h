// The search for the best regression model: the result list is a table model
// over the search's rows, so a million fits scroll as one. Its rules are
// those of APRForm.
#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "regression/APRForm.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTableView;
class QTimer;

namespace kestrow {

// The result grid: the search's rows, the hidden columns hidden by the view.
class APRResultsModel : public QAbstractTableModel {
 public:
  explicit APRResultsModel(const APRForm& form, QObject* parent = nullptr) : QAbstractTableModel(parent), form_(form) {}
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  // Between Freeze and Thaw the model shows nothing: the search is adding rows.
  void Freeze();
  void Thaw();

 private:
  const APRForm& form_;
  int rows_ = 0;
};

class frmAPR : public QDialog {
  Q_OBJECT

 public:
  frmAPR(Study& study, const std::string& rvKey, int flag, const std::vector<std::pair<std::string, std::string>>& grid,
         const std::string& modelName, QWidget* parent = nullptr);

  // The best subset's mask when Exit is to copy it back, else 0.
  std::uint32_t CopyBackMask() const { return mask_; }
  const APRForm& Form() const { return form_; }

  QLabel *lblModelType, *lblWarning, *lblProgress;
  QCheckBox *chkHierarchy, *chkCopyBack;
  QTableView* grdResults;
  QPushButton *cmdStart, *cmdPrint, *cmdCueCard, *cmdExit;

 protected:
  void reject() override;

 private:
  void cmdStart_Click();
  void cmdExit_Click();

  APRForm form_;
  APRResultsModel* model_;
  QTimer* progress_;
  std::uint32_t mask_ = 0;
};

}  // namespace kestrow
