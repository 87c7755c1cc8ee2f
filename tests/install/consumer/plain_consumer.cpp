// What works without Qt's headers may be compiled without -fPIC: then the program has copies of
// what the library points to, and its own addresses of the library's functions.
#include <cstdio>
#include <memory>

#include "bbcpp/bbdocument.h"
#include "printerdocs/expressionevaluator.h"

namespace {

int failures = 0;

void expect(const char *what, bool isSo)
{
    if (isSo)
        return;
    ++failures;
    std::fprintf(stderr, "%s\n", what);
}

double twice(double value)
{
    return 2 * value;
}

/// Of the program, derived from a class of the library.
class Marked : public bbcpp::BBElement
{
public:
    using BBElement::BBElement;

    void appendChild(std::shared_ptr<bbcpp::BBNode> node) override
    {
        ++appended;
        BBElement::appendChild(std::move(node));
    }

    int appended = 0;
};

void buildTrees()
{
    const auto tree = std::make_shared<bbcpp::BBDocument>();
    tree->load("[b]Thank[/b] you");
    expect("text", bbcpp::getRawString(*tree) == "Thank you");
    const auto element = bbcpp::tryDowncast<bbcpp::BBElement>(tree->getChildren().front());
    expect("element of the library's", element != nullptr && element->getNodeName() == "b");
    expect("no text", bbcpp::tryDowncast<bbcpp::BBText>(element) == nullptr);

    const auto marked = std::make_shared<Marked>("own");
    marked->appendChild(std::make_shared<bbcpp::BBText>("of the program's"));
    expect("virtual function", marked->appended == 1);
    expect("text of both", bbcpp::getRawString(*marked) == "of the program's");
    tree->appendChild(marked);
    expect("class of the program's",
           bbcpp::tryDowncast<Marked>(tree->getChildren().back()) == marked);
    bool isRefused = false;
    try {
        bbcpp::downcast<bbcpp::BBText>(marked);
    } catch (const std::invalid_argument &) {
        isRefused = true;
    }
    expect("exception", isRefused);
}

void evaluate()
{
    double five = 5;
    const te_variable variables[] = {
        {"five", &five, TE_VARIABLE, nullptr},
        {"twice", reinterpret_cast<const void *>(&twice), TE_FUNCTION1, nullptr}};
    int error = -1;
    te_expr *const expression = te_compile("twice(five)+sqrt(16)", variables, 2, &error);
    expect("compiled", expression != nullptr && error == 0);
    expect("value", te_eval(expression) == 14);
    te_free(expression);
    expect("at once", te_interp("2*3.5", nullptr) == 7);
}

}  // namespace

int main()
{
    buildTrees();
    evaluate();
    return failures == 0 ? 0 : 1;
}
