// Searches the pages and the reference. The index is a script: a page that is opened as
// a file may fetch nothing. It is loaded when somebody wants to search.
(function () {
  "use strict";
  var MOST = 40;
  var SHOWN_TEXT = 200;
  var WORDS = /[^\p{L}\p{N}]+/u;
  var documents = null;
  var index = null;
  var waiting = false;

  function load(names, done) {
    if (names.length === 0) {
      done();
      return;
    }
    var script = document.createElement("script");
    script.src = base_url + "/search/" + names[0];
    script.onload = function () { load(names.slice(1), done); };
    document.head.appendChild(script);
  }

  function prepare(done) {
    if (index !== null) {
      done();
    } else if (!waiting) {
      waiting = true;
      load(["lunr.js", "index.js"], function () {
        lunr.tokenizer.separator = WORDS;
        documents = siteIndex;
        index = lunr(function () {
          this.field("title", { boost: 5 });
          this.field("text");
          this.ref("place");
          documents.forEach(function (each, place) {
            this.add({ place: place, title: each.title, text: each.text });
          }, this);
        });
        done();
      });
    }
  }

  function find(text) {
    var words = text.toLowerCase().split(WORDS).filter(Boolean);
    if (words.length === 0) {
      return [];
    }
    return index.query(function (query) {
      words.forEach(function (word) {
        query.term(word, { boost: 10 });
        query.term(lunr.stemmer(new lunr.Token(word)).toString(), { boost: 5 });
        query.term(word, { wildcard: lunr.Query.wildcard.TRAILING });
      });
    }).slice(0, MOST).map(function (found) { return documents[found.ref]; });
  }

  // The part of the text that has the first of the words.
  function excerpt(text, words) {
    var low = text.toLowerCase();
    var at = words.map(function (word) { return low.indexOf(word); })
      .filter(function (place) { return place >= 0; });
    var start = Math.max(0, Math.min.apply(null, at.concat(text.length)) - SHOWN_TEXT / 4);
    start = at.length === 0 ? 0 : start === 0 ? 0 : text.lastIndexOf(" ", start) + 1;
    return (start > 0 ? "... " : "") + text.substr(start, SHOWN_TEXT);
  }

  function add(parent, tag, text) {
    var element = parent.appendChild(document.createElement(tag));
    element.textContent = text;
    return element;
  }

  function show(text) {
    var place = document.getElementById("mkdocs-search-results");
    var words = text.toLowerCase().split(WORDS).filter(Boolean);
    var found = find(text);
    place.textContent = "";
    if (found.length === 0 && words.length > 0) {
      add(place, "p", "Nothing found");
    }
    found.forEach(function (each) {
      var article = place.appendChild(document.createElement("article"));
      var link = add(add(article, "h3", ""), "a", each.title);
      link.href = base_url + "/" + each.location;
      if (each.page !== each.title) {
        add(article, "small", each.page);
      }
      add(article, "p", excerpt(each.text, words));
    });
  }

  document.addEventListener("DOMContentLoaded", function () {
    var box = document.getElementById("mkdocs-search-query");
    var dialog = $("#mkdocs_search_modal");
    function search() {
      prepare(function () { show(box.value); });
    }
    box.addEventListener("input", search);
    box.form.addEventListener("submit", function (event) { event.preventDefault(); });
    dialog.on("shown.bs.modal", function () {
      box.focus();
      search();
    });
    $("#mkdocs-search-results").on("click", "a", function () { dialog.modal("hide"); });
    var wanted = new URLSearchParams(window.location.search).get("q");
    if (wanted) {
      box.value = wanted;
      dialog.modal("show");
    }
  });
})();
