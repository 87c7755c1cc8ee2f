#include "goals.h"

namespace {

Goal hostile(const char *work, const char *ours, const char *peer)
{
    return {work, "bench_hostile", ours, peer, 3, "", false, {125, 250, 500, 1000}};
}

}  // namespace

const std::vector<Goal> goals{
    {"text, # items", "bench_receipt", "indexed/#", "hand_map/#", 2},
    {"text, # items", "bench_receipt", "indexed/#", "grantlee_formats/#", 0.35},
    {"text, # items", "bench_receipt", "indexed/#", "grantlee/#", 0.8},
    {"text, # items", "bench_receipt", "indexed/#", "mustache/#", 1.2},
    {"text, # items", "bench_receipt", "indexed/#", "ctemplate/#", 1, "", true},
    {"text, # items", "bench_receipt", "indexed/#", "hand_qt/#", 0},
    {"text from entries, # items", "bench_receipt", "entries/#", "indexed/#", 0.6},
    {"text from expressions, # items", "bench_receipt", "expressions/#", "indexed/#", 1.5},
    {"expressions, 10 times the items", "bench_receipt", "expressions/1000", "expressions/100", 13},
    {"HTML, # items", "bench_receipt", "html/#", "indexed/#", 1.3},
    {"blocks, # items", "bench_receipt", "blocks/#", "indexed/#", 1.3},
    {"warnings on, # items", "bench_receipt", "indexed_warnings_on/#", "indexed/#", 1.35},
    {"text, 10 times the lines", "bench_formatting", "documentOfLines/100000",
     "documentOfLines/10000", 13},
    {"HTML, 10 times the lines", "bench_formatting", "documentToHtml/100000",
     "documentToHtml/10000", 13},
    {"blocks, 10 times the lines", "bench_formatting", "documentToBlocks/100000",
     "documentToBlocks/10000", 13},
    {"JSON of a document, # items", "bench_documents", "map_to_json/#", "json_directly/#", 2},
    {"te_interp, short", "bench_expressions", "interp_short", "muparser_parsing_short", 0.1},
    {"te_interp, sum of 20", "bench_expressions", "interp_sum", "muparser_parsing_sum", 0.15},
    {"te_eval, short", "bench_expressions", "eval_short", "muparser_compiled_short", 1.2},
    {"te_eval, sum of 20", "bench_expressions", "eval_sum", "muparser_compiled_sum", 2.5},
    hostile("hostile names, staircase, #", "staircase/#", "staircase_by_the_letter/#"),
    hostile("hostile names, long and absent, #", "long_and_absent/#",
            "long_and_absent_by_the_letter/#"),
    hostile("hostile names, prefixes, #", "prefixes/#", "prefixes_by_the_letter/#"),
    hostile("hostile names, one length, #", "one_length/#", "one_length_by_the_letter/#"),
    hostile("hostile names, overlapping, #", "overlapping/#", "overlapping_by_the_letter/#"),
    hostile("hostile names, chain, #", "chain/#", "chain_by_the_letter/#"),
    hostile("hostile names, seams, #", "seams/#", "seams_by_the_letter/#"),
    hostile("hostile names, vanishing, #", "vanishing/#", "vanishing_by_the_letter/#"),
    hostile("hostile names, growing, #", "growing/#", "growing_by_the_letter/#"),
    hostile("hostile names, all stand, #", "all_stand/#", "all_stand_by_the_letter/#"),
    hostile("hostile names, same low byte, #", "same_low_byte/#", "same_low_byte_by_the_letter/#"),
    hostile("hostile names, colliding, #", "colliding/#", "colliding_by_the_letter/#"),
    {"BBCode, 10 kB", "bench_bbcode", "parse/10", "read_as_xml/10", 2},
    {"BBCode, 100 kB", "bench_bbcode", "parse/100", "read_as_xml/100", 2},
    {"BBCode, 1 MB", "bench_bbcode", "parse/1000", "read_as_xml/1000", 2},
    {"BBCode, 10 MB", "bench_bbcode", "parse/10000", "read_as_xml/10000", 2},
    {"BBCode, 10 MB after 1 MB", "bench_bbcode", "parse/10000", "parse/1000", 13},
    {"all models, second time", "bench_catalogue", "fromResources", "parsedOnce", 0.02},
    {"characters per line", "bench_catalogue", "defSymbolsPerLine", "parsedOnce", 0.05},
    {"allocations per line, text, # items", "bench_allocations", "plain_text/#", "", 12,
     "per_line"},
    {"allocations per line, entries, # items", "bench_allocations", "entries/#", "", 12,
     "per_line"},
    {"allocations per line, expressions, # items", "bench_allocations", "expressions/#", "", 12,
     "per_line"},
    {"allocations per line, HTML, # items", "bench_allocations", "html/#", "", 12, "per_line"},
    {"allocations per line, blocks, # items", "bench_allocations", "blocks/#", "", 12, "per_line"},
    {"allocations per line, hand_map, # items", "bench_allocations", "hand_map/#", "", 0,
     "per_line"},
    {"silent port, over its waits", "bench_discovery", "silentPort", "", 1.03, "over_waits"},
};
