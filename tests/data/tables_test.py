"""Tables of real bibliographic formats: each framework is a table, its tags head groups, subfields are their members."""

import realdata


class Tables(realdata.RealData):
    def table(self, name, tags, subfields):
        fields = realdata.table_fields(tags, subfields, self.counts)
        dropped = self.counts["subfields without a tag, dropped"]
        self.assertEqual(len(fields), len(tags) + len(subfields) - dropped)
        parms = [f'NAME= "{name}"', "STYLE= RECORD", 'INDEX= "TIT"', "COLUMNS= 0", "SORT= ", "FLAGS=CATALOGUE",
                 "TABLEID= 1", 'MIRROROF= ""']

        def build(s):
            s.result("SaveData", CurrItem=s.leaves("PARMS")[0], Buffer="\r\n".join(parms))
            s.each("EditData", [{"CurrItem": "FIELDS"}] * len(fields))
            captions = s.each("SaveData", [{"CurrItem": key, "Buffer": "\r\n".join(realdata.field_lines(f))}
                                           for key, f in zip(s.leaves("FIELDPARMS"), fields, strict=True)])
            self.assertEqual([c["NewItemKey"] for c in captions], [f"{f['LEVEL']}:{f['NAME']}" for f in fields])

        head = realdata.block(1, "PARMS", realdata.told(2, parms, name, 1))
        expected = [realdata.block(1, "FIELDS", [realdata.block(
            2, "FIELDPARMS", realdata.told(3, realdata.field_lines(f), f["NAME"], 0))]) for f in fields]
        self.goes_through("TABLE", name, build, head, expected, "FIELDS")
        self.tell(f"{name}: {len(fields)} fields, {len(tags)} of them heads of groups")

    def frameworks(self, prefix, key, names):
        tags, subfields = (realdata.rows(f"{prefix}_{what}.tsv") for what in ("tags", "subfields"))
        for code, name in names.items():
            with self.subTest(name):
                self.counts.clear()
                self.table(name, [r for r in tags if r[key] == code], [r for r in subfields if r[key] == code])

    def test_unimarc_bibliographic(self):
        found = {r["framework"]: f"UNIMARC {r['framework']}".strip() for r in realdata.rows("unimarc_it_frameworks.tsv")}
        self.frameworks("unimarc_it", "framework", found)

    def test_unimarc_authority(self):
        found = {r["type"]: f"AUTHORITY {r['type']}".strip() for r in realdata.rows("unimarc_it_auth_types.tsv")}
        self.frameworks("unimarc_it_auth", "type", found)

    def test_marc21(self):
        self.frameworks("marc21_en", "framework", {"": "MARC21"})


if __name__ == "__main__":
    realdata.main()
