#include "host/desktop/ObjectDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

#include "host/desktop/ClassNames.h"
#include "host/desktop/QtText.h"
#include "server/vdSvr.h"

namespace kv::desktop {

ObjectDialog::ObjectDialog(const QString& Title, const NewObject& Proposed, bool ClassGiven, Maker Make,
                           QWidget* Parent)
    : QDialog(Parent), Make_(std::move(Make)) {
    setWindowTitle(Title);

    Class_ = new QComboBox;
    Class_->setObjectName(QStringLiteral("class"));
    const auto Known = ClassWords();
    std::vector<std::wstring_view> Words(Known.begin(), Known.end());
    std::sort(Words.begin(), Words.end());
    for (const std::wstring_view Word : Words) {
        const QString Name = ClassName(Word);
        Class_->addItem(Name.isEmpty() ? FromWide(Word) : FromWide(Word) + QStringLiteral(" – ") + Name,
                        FromWide(Word));
    }
    Class_->setCurrentIndex(std::max(0, Class_->findData(FromWide(Proposed.Clsid))));
    Class_->setMaxVisibleItems(Class_->count());
    Class_->setEnabled(!ClassGiven);
    Class_->setAccessibleName(tr("Classe"));
    Name_ = new QLineEdit(FromWide(Proposed.Name));
    Name_->setObjectName(QStringLiteral("name"));
    Name_->setAccessibleName(tr("Nome"));
    Name_->selectAll();
    Desc_ = new QLineEdit(FromWide(Proposed.Desc));
    Desc_->setCursorPosition(0);
    Desc_->setObjectName(QStringLiteral("desc"));
    Desc_->setAccessibleName(tr("Descrizione"));

    QDialogButtonBox* const Buttons = new QDialogButtonBox;
    QPushButton* const Ok = Buttons->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    Buttons->addButton(tr("&Annulla"), QDialogButtonBox::RejectRole);
    Ok->setDefault(true);
    const auto Enable = [this, Ok] { Ok->setEnabled(!Name_->text().trimmed().isEmpty()); };
    Enable();
    connect(Name_, &QLineEdit::textChanged, Ok, Enable);
    connect(Buttons, &QDialogButtonBox::accepted, this, &ObjectDialog::accept);
    connect(Buttons, &QDialogButtonBox::rejected, this, &ObjectDialog::reject);

    QFormLayout* const Form = new QFormLayout;
    Form->addRow(tr("&Classe:"), Class_);
    Form->addRow(tr("&Nome:"), Name_);
    Form->addRow(tr("&Descrizione:"), Desc_);
    QVBoxLayout* const Column = new QVBoxLayout(this);
    Column->addLayout(Form);
    Column->addWidget(Buttons);
    Desc_->setMinimumWidth(60 * fontMetrics().averageCharWidth());
    Name_->setFocus();
}

NewObject ObjectDialog::Filled() const {
    return {ToWide(Class_->currentData().toString()), ToWide(Name_->text().trimmed()),
            ToWide(Desc_->text().trimmed())};
}

void ObjectDialog::accept() {
    if (Make_(Filled())) {
        QDialog::accept();
        return;
    }
    Name_->selectAll();
    Name_->setFocus();
}

}  // namespace kv::desktop
