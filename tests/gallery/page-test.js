// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

// Runs within a copy of the gallery's page, after it, in a browser without a screen. The result is an attribute of the
// page's body.
"use strict";
(async () => {
  const press = key => document.dispatchEvent(new KeyboardEvent("keydown", { key, bubbles: true }));
  const $ = id => document.getElementById(id);
  const count = () => $("grid").children.length;
  const choose = (axis, value) => { $(axis).value = value; $(axis).dispatchEvent(new Event("change")); };
  const expect = (condition, what) => { if (!condition) throw new Error(what); };
  const loaded = images => Promise.all([...images].map(async image => {
    image.loading = "eager"; // also those that are not on the screen
    if (!image.complete)
      await new Promise(resolve => { image.onload = image.onerror = resolve; });
    expect(image.naturalWidth > 0, "a picture has no width");
  }));
  const chosenName = () => document.querySelector(".chosen figcaption").firstChild.textContent;
  try {
    choose("language", "");
    const all = JSON.parse($("data").textContent).pictures;
    expect(count() === all, "without a filter " + count() + " of " + all + " pictures are there");
    await loaded(document.images);
    for (const axis of ["language", "state", "contrast", "size", "text"]) {
      const values = [...$(axis).options].map(option => option.value).filter(value => value);
      let sum = 0;
      for (const value of values) {
        choose(axis, value);
        expect(count() > 0, "nothing is left for " + axis + " " + value);
        sum += count();
      }
      choose(axis, "");
      expect(sum === all, axis + " leaves " + sum + " of " + all + " pictures");
    }
    const first = chosenName();
    press("ArrowRight");
    const second = chosenName();
    expect(first !== second, "the arrow does not lead on");
    press("ArrowLeft");
    expect(chosenName() === first, "the arrow does not lead back");
    press("p");
    press("ArrowRight");
    press("Enter");
    expect(!$("compare").hidden, "Enter does not compare");
    const sides = ["left", "right"].map(id => $(id).querySelector("img").getAttribute("src"));
    expect(sides[0] !== sides[1], "the same picture is on both sides");
    const both = [...$("difference").querySelectorAll("img")].map(image => image.getAttribute("src"));
    expect(both.join() === sides.join(), "the difference is not that of the two");
    expect(getComputedStyle($("difference").lastChild).mixBlendMode === "difference", "it is no difference");
    const boxes = [...$("difference").children].map(image => image.getBoundingClientRect());
    expect(boxes[0].x === boxes[1].x && boxes[0].y === boxes[1].y, "the two do not lie on each other");
    await loaded($("compare").querySelectorAll("img"));
    press("ArrowRight");
    expect($("right").querySelector("img").getAttribute("src") !== sides[1], "it does not flip through");
    press("Escape");
    expect($("compare").hidden, "Escape does not lead back");
    press("l");
    expect($("language").value !== "" && count() < all, "the key does not choose a language");
    document.body.dataset.test = "passed";
  } catch (error) {
    document.body.dataset.test = "failed: " + error.message;
  }
})();
