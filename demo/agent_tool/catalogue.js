export const products = Object.freeze([
  {
    sku: "SHIRT-OXFORD-M-BLUE",
    name: "Oxford shirt",
    variant: "Blue, M",
    priceInCents: 5995,
    picture: {
      background: "#dbe7f6",
      colour: "#4a78b5",
      outline: "M17 9 8 14l3 9 4-2v19h18V21l4 2 3-9-9-5c-1 4-13 4-14 0z",
      detail: "M24 13v27M20 11l4 5 4-5",
    },
  },
  {
    sku: "JEANS-SLIM-32-INDIGO",
    name: "Slim jeans",
    variant: "Indigo, 32",
    priceInCents: 7400,
    picture: {
      background: "#e3e1f3",
      colour: "#3d3f86",
      outline: "M15 8h18l3 32h-8l-4-20-4 20h-8z",
      detail: "M15 13h18M24 13v7",
    },
  },
  {
    sku: "SCARF-MERINO-GREY",
    name: "Merino scarf",
    variant: "Grey",
    priceInCents: 4990,
    picture: {
      background: "#e9e7e4",
      colour: "#77777d",
      outline: "M13 11c6-4 16-4 22 0l-3 9-2 1v18h-8V22c-5-1-8-5-9-11z",
      detail: "M22 34h8M22 30h8M18 14c4 2 8 2 12 0",
    },
  },
  {
    sku: "SNEAKER-CANVAS-42-CORAL",
    name: "Canvas sneakers",
    variant: "Coral, 42",
    priceInCents: 8900,
    picture: {
      background: "#fbe3da",
      colour: "#d2664a",
      outline: "M8 17c4 3 8 2 11-2l8 9c4 3 13 2 13 9v2H8z",
      detail: "M8 31h32M20 21l4-3M23 24l4-2",
    },
  },
].map((product) => Object.freeze({ ...product, currency: "EUR" })));
