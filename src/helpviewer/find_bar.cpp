#include "helpviewer/find_bar.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "helpviewer/help_page.hpp"

namespace quintara {

FindBar::FindBar(HelpPage& page, QWidget* parent)
    : QWidget(parent), page_(page), text_(new QLineEdit), outcome_(new QLabel) {
  auto* label = new QLabel(QStringLiteral("F&ind in page:"));
  label->setBuddy(text_);
  text_->setAccessibleName(QStringLiteral("Find in page"));
  outcome_->setTextFormat(Qt::PlainText);
  auto* previous = new QPushButton(QStringLiteral("&Previous"));
  auto* following = new QPushButton(QStringLiteral("&Next"));
  auto* row = new QHBoxLayout;
  for (QWidget* part :
       {static_cast<QWidget*>(label), static_cast<QWidget*>(text_), static_cast<QWidget*>(previous),
        static_cast<QWidget*>(following), static_cast<QWidget*>(outcome_)}) {
    row->addWidget(part);
  }
  setLayout(row);
  connect(text_, &QLineEdit::returnPressed, this, [this] { next(false); });
  connect(text_, &QLineEdit::textEdited, outcome_, &QLabel::clear);
  connect(previous, &QPushButton::clicked, this, [this] { next(true); });
  connect(following, &QPushButton::clicked, this, [this] { next(false); });
  hide();
}

void FindBar::start() {
  show();
  text_->setFocus();
  text_->selectAll();
}

void FindBar::next(bool backward) {
  if (text_->text().isEmpty()) {
    return start();
  }
  const bool found = page_.findText(text_->text(), backward);
  outcome_->setText(found ? QString() : QStringLiteral("Not found on this page"));
}

}  // namespace quintara
