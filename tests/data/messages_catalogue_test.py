"""The messages of a catalogue program, in five languages, as a string table."""

import realdata
import string_tables


class Messages(string_tables.StringTables):
    def test_messages(self):
        self.table("CATALOGO", "messages_catalogue.tsv")


if __name__ == "__main__":
    realdata.main()
