// Asks for the class, the name and the description of an object that is to be made.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <string>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace kv::desktop {

/// What is proposed, and what the operator makes of it.
struct NewObject {
    std::wstring Clsid;
    std::wstring Name;
    std::wstring Desc;
};

class ObjectDialog final : public QDialog {
    Q_OBJECT

  public:
    /// `Make` makes the object; where it answers False, having told why, the form stays as it was filled in.
    using Maker = std::function<bool(const NewObject&)>;

    ObjectDialog(const QString& Title, const NewObject& Proposed, bool ClassGiven, Maker Make,
                 QWidget* Parent);

    /// As it stands in the form.
    NewObject Filled() const;

    void accept() override;

  private:
    Maker Make_;
    QComboBox* Class_ = nullptr;
    QLineEdit* Name_ = nullptr;
    QLineEdit* Desc_ = nullptr;
};

}  // namespace kv::desktop
