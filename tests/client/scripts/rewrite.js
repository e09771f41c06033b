// Rewrites a formula through its content: the square c^2 on the right of a^2 + b^2 = c^2 becomes
// the product c c. Run on data/examples/pythagorean-theorem.xml by the client tests.
var formula = document.documentElement();
var content = formula.getAttribute("content");

var square = '<expr tmp="power"><ident>c</ident><num>2</num></expr>';
var product = '<expr tmp="implicit_times"><ident>c</ident><ident>c</ident></expr>';
if (content.indexOf(square) < 0)
    throw new Error("no c^2 in " + content);

formula.setAttribute("content", content.replace(square, product));
formula.release();
