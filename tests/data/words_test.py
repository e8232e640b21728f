"""Tables of words and their replacements from real lists of variants and synonyms."""

import realdata


class Words(realdata.RealData):
    def words(self, name, file, replacement):
        data = realdata.rows(file)
        separator, pairs = realdata.word_pairs([(r["word"], r[replacement]) for r in data], self.counts)
        parms = ["ANYWHERE= FALSE", "IFFIRST= FALSE", "IFNOTONLY= FALSE", "IGNORECASE= TRUE",
                 f'SEPARATOR= "{separator}"', "FLAGS= KEEPTERM|TERMSPACE", 'MIRROROF= ""']
        lines = realdata.word_lines(pairs, separator)

        def build(s):
            leaf = s.leaves("PARMS")[0]
            s.result("DispData", CurrItem=leaf)  # gives a new table its separator
            s.result("SaveData", CurrItem=leaf, Buffer="\r\n".join(parms))
            s.result("SaveData", CurrItem=s.leaves("MESSAGE")[0], Buffer="\r\n".join(lines))

        head = realdata.block(1, "PARMS", realdata.told(2, parms, name, 1))
        shape = f"'\"ParolaDaCercare\"{separator}\"ParolaDiSostituzione\""
        section = realdata.block(1, "MESSAGE", realdata.told(2, [*lines, shape], name, 1))
        self.goes_through("STOPWORD", name, build, head, [section], "MESSAGE")
        self.tell(f"{name}: {len(pairs)} pairs of {len(data)} rows, separator {separator}")

    def test_variants_one(self):
        self.words("VARIANTI A", "variants_it_ita.tsv", "replacement")

    def test_variants_two(self):
        self.words("VARIANTI B", "variants_it_iwn.tsv", "replacement")

    def test_first_synonyms(self):
        self.words("SINONIMI", "synonyms_it_thesaurus_one.tsv", "replacement")

    def test_all_synonyms(self):
        self.words("SINONIMI A-C", "synonyms_it_thesaurus_many_a_c.tsv", "synonym")


if __name__ == "__main__":
    realdata.main()
