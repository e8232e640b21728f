#include "records/CopiedTable.h"

#include "frame/CoreUtil.h"
#include "frame/vdbInclude.h"

namespace kv {

bool LoadCopiedTable(TableRecord& Table) {
    RegObject Copied;
    std::wstring Name;
    std::wstring Path;
    bool Failed = ClipboardLoad(Copied, Name, Path, 1, Telling::Keep);
    if (!Failed) {
        MemoryRegData Object(L"TABLE", std::move(Copied));
        Failed = Table.Load(Object);
    }
    if (Failed) CoreUtil::Instance().ForgetError();
    return Failed;
}

bool ConfirmMapping(bool HasFields, bool& Remove) {
    Platform& Door = CoreUtil::Instance().Door();
    if (HasFields) {
        const Answer Given =
            Door.MessageBox(L"Si vogliono rimuovere i campi già presenti  nell'oggetto?",
                            box::kYesNoCancel + box::kQuestion + box::kDefaultThird + box::kForeground);
        Remove = Given == Answer::Yes;
        return Given == Answer::Yes || Given == Answer::No;
    }
    Remove = false;
    return Door.MessageBox(L"Confermi la generazione automatica dei campi dalla TABLE della Clipboard?",
                           box::kYesNo + box::kQuestion + box::kDefaultSecond + box::kForeground) ==
           Answer::Yes;
}

void TellMapped() {
    static_cast<void>(CoreUtil::Instance().Door().MessageBox(
        L"Operazione completata: salvare l'oggetto e riaprirlo per visualizzare le modifiche.", box::kOk));
}

}  // namespace kv
