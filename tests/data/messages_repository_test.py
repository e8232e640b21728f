"""The messages of a repository program, in five languages, as a string table."""

import realdata
import string_tables


class Messages(string_tables.StringTables):
    def test_messages(self):
        self.table("DEPOSITO", "messages_repository.tsv")


if __name__ == "__main__":
    realdata.main()
