// Shows what differs between two states of an object, section by section.
#pragma once

#include <QDialog>
#include <vector>

#include "host/desktop/ObjectTexts.h"

class QDialogButtonBox;
class QLabel;
class QTextBrowser;

namespace kv::desktop {

/// What the operator wants done about a save that another program overtook.
enum class Overtaken { Cancel, TakeOver, Keep };

class ChangesDialog final : public QDialog {
    Q_OBJECT

  public:
    /// A preview: one button, to close it.
    ChangesDialog(const QString& Title, std::vector<SectionChange> Changes, QWidget* Parent);

    /// Asks which state is to hold: the stored one or the one under edit. `Changes` leads from the first to
    /// the second. Cancel is the default, and what Escape and closing mean.
    static Overtaken AskOvertaken(std::vector<SectionChange> Changes, QWidget* Parent);

    /// The comparison: a heading a section, then its lines behind "-", "+" or a blank.
    QTextBrowser* Text() const noexcept { return Text_; }

  protected:
    void changeEvent(QEvent* Event) override;

  private:
    void AskWhich();
    void Fill();

    std::vector<SectionChange> Changes_;
    QLabel* Question_ = nullptr;
    QTextBrowser* Text_ = nullptr;
    QDialogButtonBox* Buttons_ = nullptr;
    Overtaken Answer_ = Overtaken::Cancel;
};

}  // namespace kv::desktop
