"""String tables: one message for each row of a file, its name and up to five languages."""

import realdata


def text_lines(text, language):
    return [f'TEXT= "{text}"', f'LANG= "{language}"']


class StringTables(realdata.RealData):
    def table(self, name, file):
        data = realdata.rows(file)
        made = realdata.messages(data, self.counts)
        self.assertEqual(len(made), len(data) - self.counts["messages without a text dropped"])
        flat = [text for _, texts in made for text in texts]

        def build(s):
            s.each("EditData", [{"CurrItem": "FIELDS"}] * len(made))
            # A new message has one text; the further ones are added to its folder.
            folders = [n["Key"] for n in s.result("tree")
                       if n["Key"].startswith("FIELDCAPTION-") and " " not in n["Key"]]
            s.each("EditData", [{"CurrItem": folder} for folder, (_, texts) in zip(folders, made, strict=True)
                                for _ in texts[1:]])
            captions = s.each("SaveData", [{"CurrItem": key, "Buffer": f'NAME= "{message}"'} for key, (message, _) in
                                           zip(s.leaves("FIELDPARMS"), made, strict=True)])
            self.assertEqual([c["NewItemKey"] for c in captions], [message for message, _ in made])
            s.each("SaveData", [{"CurrItem": key, "Buffer": "\r\n".join(text_lines(*text))}
                                for key, text in zip(s.leaves("FIELDCAPTION"), flat, strict=True)])

        expected = [realdata.block(1, "FIELDS", [
            realdata.block(2, "FIELDPARMS", realdata.told(3, [f'NAME= "{message}"'], message, 0)),
            *(realdata.block(2, "FIELDCAPTION", realdata.told(0, text_lines(*text), "", 0)) for text in texts)])
            for message, texts in made]
        self.goes_through("STRINGTABLE", name, build, "", expected, "FIELDS")
        self.tell(f"{name}: {len(made)} messages of {len(data)} rows, {len(flat)} texts")
